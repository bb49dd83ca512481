#pragma once

#include "controls/Alert.h"
#include "controls/Control.h"
#include "drawing/Document.h"
#include "region/Environment.h"
#include "values/Date.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

// What the application needs of the platform. Each port is implemented once with Qt and once for tests;
// nothing else reads the clock, the surroundings or the disk's layout.

namespace kpx {

class AlertPresenter {
public:
    virtual ~AlertPresenter() = default;
    /// Shows the alert as a sheet of the window or sheet of that name and returns at once. Alerts asked
    /// for while another hangs there are shown one after the other. `completion` (may be empty) gets the
    /// return code, `help` (may be empty) is called for the help button.
    virtual void beginSheet(const std::string& window, const Alert& alert,
                            std::function<void(int returnCode)> completion, std::function<void()> help) = 0;
    /// Blocks until a button is pressed; answers the return code.
    virtual int runModal(const Alert& alert) = 0;
};

class WindowPresenter {
public:
    virtual ~WindowPresenter() = default;
    virtual void makeFirstResponder(const Control& control) = 0;
    /// Where the control is folded away, it is no longer.
    virtual void unfold(const Control& control) = 0;
    virtual void beep() = 0;
    virtual void showSplash(const std::vector<std::string>& fields) = 0;
    virtual void closeSplash() = 0;
    /// Brings the main window to the front; `evenIfAnotherIsActive` also takes over from another
    /// application.
    virtual void makeMainWindowKeyAndFront(bool evenIfAnotherIsActive) = 0;
    virtual void setSmallFont(const Control& control) = 0;
    /// Ends the application; the program's own work ends with the current action.
    virtual void terminate() = 0;
    virtual void log(const std::string& text) = 0;
};

class Workspace {
public:
    virtual ~Workspace() = default;
    enum class FileType { Image, PDF, Other };
    /// Opens a file, folder or web address with the program the desktop has for it. `failed` (may be empty) is
    /// called when it cannot: at once, or later when the desktop's opener ends with an error.
    virtual void open(const std::string& target, std::function<void()> failed) = 0;
    /// By the desktop's file type database; an image that is also a document counts as an image.
    virtual FileType typeOfFile(const std::filesystem::path& file) = 0;
    virtual std::vector<std::string> runningApplications() = 0;
    /// The folders for application data in the user's domain, best first; the base folder of the first
    /// exists.
    virtual std::vector<std::filesystem::path> applicationSupportDirectories() = 0;
};

class FileChooser {
public:
    virtual ~FileChooser() = default;
    /// Lets the user choose a picture or PDF, beginning in the folder, and returns at once. `chosen` is called
    /// with the file, and not at all when the user cancels.
    virtual void chooseFile(const std::filesystem::path& folder,
                            std::function<void(const std::filesystem::path& file)> chosen) = 0;
};

class Clipboard {
public:
    virtual ~Clipboard() = default;
    /// The first address, or else the first line of text, that the clipboard holds; empty for neither.
    virtual std::string address() = 0;
    /// Puts the same thing there in two forms.
    virtual void setText(const std::string& plain, const std::string& html) = 0;
};

class UserDefaults {
public:
    virtual ~UserDefaults() = default;
    /// The stored value, else the registered one, else 0.
    virtual std::int64_t integer(const std::string& key) = 0;
    virtual void setInteger(const std::string& key, std::int64_t value) = 0;
    /// A fallback for this run; not stored.
    virtual void registerDefault(const std::string& key, std::int64_t value) = 0;
    /// Flushes to disk.
    virtual void synchronize() = 0;
};

/// A reminder in the desktop's notification centre.
struct UserNotification {
    /// Given by the centre when it schedules the notification; empty before.
    std::string identifier;
    std::string title;
    std::string informativeText;
    Date deliveryDate;
    bool repeatsDaily = false;
    bool defaultSound = false;
    /// The one for all prescriptions that reach their day; nobody scheduled it.
    bool isStanding = false;
};

class UserNotificationCenter {
public:
    virtual ~UserNotificationCenter() = default;
    virtual void scheduleNotification(const UserNotification& notification) = 0;
    virtual void removeDeliveredNotification(const UserNotification& notification) = 0;
    virtual void removeScheduledNotification(const UserNotification& notification) = 0;
    /// All that are scheduled and not withdrawn, in the order in which they were.
    virtual std::vector<UserNotification> scheduledNotifications() = 0;
    /// How many days before its day the standing reminder names a prescription; none while it is off.
    virtual std::optional<int> standingLead() = 0;
    virtual void setStandingLead(std::optional<int> days) = 0;
    /// Called when the user clicks a notification while the application runs.
    std::function<void(const UserNotification& notification)> didActivateNotification;
    /// Asked before a notification is shown while the application runs, where the centre offers to keep it back.
    std::function<bool(const UserNotification& notification)> shouldPresentNotification;
};

class Clock {
public:
    virtual ~Clock() = default;
    virtual Date now() = 0;
    /// Runs the call on the main thread, after the current action at the earliest.
    virtual void callAfter(double seconds, std::function<void()> call) = 0;
};

class SystemInformation {
public:
    virtual ~SystemInformation() = default;
    struct Version {
        int major = 0;
        int minor = 0;
    };
    /// Both 0 when it cannot be had.
    virtual Version systemVersion() = 0;
    /// The user's locale and time zone as they are now.
    virtual Region region() = 0;
    /// The desktop's appearance setting, "Dark" in it for a dark one; empty for none.
    virtual std::string appearanceStyle() = 0;
    /// Called when the appearance setting changes.
    std::function<void()> appearanceDidChange;
};

class WebFetch {
public:
    virtual ~WebFetch() = default;
    struct Response {
        int status = 0;
        std::string body;  ///< the bytes as they came
    };
    /// Blocks until the answer is there or the time-out is over; null when no answer came. Reads no more than the
    /// first 64 kB.
    virtual std::optional<Response> fetch(const std::string& address) = 0;
};

class PrintPreview {
public:
    virtual ~PrintPreview() = default;
    /// Shows the document in a preview, without a dialog. Those of one action share a window.
    virtual void open(Document document) = 0;
    virtual FontMetrics metrics(const std::string& font, double size) = 0;
};

class Bundle {
public:
    virtual ~Bundle() = default;
    /// The folder that holds the "<lang>.lproj" folders.
    virtual std::filesystem::path resources() = 0;
    virtual std::string shortVersionString() = 0;
};

/// All of them; they outlive the application.
struct Ports {
    AlertPresenter& alerts;
    WindowPresenter& windows;
    Workspace& workspace;
    UserDefaults& defaults;
    UserNotificationCenter& notifications;
    Clock& clock;
    SystemInformation& system;
    WebFetch& web;
    PrintPreview& preview;
    Bundle& bundle;
    FileChooser& files;
    Clipboard& clipboard;
};

}  // namespace kpx
