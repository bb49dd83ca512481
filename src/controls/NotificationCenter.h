#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <string>

namespace kpx {

/// Posted by a drop target with the file dropped on it.
inline constexpr char imageChangedNotification[] = "ImageChanged";

/// Messages inside the program, from those who do not know who listens.
class NotificationCenter {
public:
    using Observer = std::function<void(const std::filesystem::path& object)>;

    void addObserver(const std::string& notification, Observer observer) {
        m_observers.emplace(notification, std::move(observer));
    }

    /// Calls all who observe the notification, in the order in which they came, before it returns.
    void post(const std::string& notification, const std::filesystem::path& object) const {
        const auto [first, last] = m_observers.equal_range(notification);
        for (auto observer = first; observer != last; ++observer) {
            observer->second(object);
        }
    }

private:
    std::multimap<std::string, Observer> m_observers;
};

}  // namespace kpx
