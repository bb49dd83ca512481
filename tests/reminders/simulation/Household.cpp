#include "tests/reminders/simulation/Household.h"

#include <sys/resource.h>

#include <system_error>

namespace kpx {

void takeOverHistory(const std::filesystem::path& histories, const std::string& day,
                     const std::filesystem::path& dataHome) {
    const std::filesystem::path folder = dataHome / "Velmora";
    const std::filesystem::path history = histories / (day + ".plist");
    std::error_code error;
    if (std::filesystem::exists(history, error)) {
        std::filesystem::create_directories(folder);
        std::filesystem::copy_file(history, folder / "new");
        std::filesystem::rename(folder / "new", folder / "prescriptionHistoryFileForKPX");
    }
}

void setDiskFull(long long process, bool isFull) {
    rlimit limit{};
    if (::prlimit(static_cast<pid_t>(process), RLIMIT_FSIZE, nullptr, &limit) == 0) {
        limit.rlim_cur = isFull ? 0 : limit.rlim_max;
        ::prlimit(static_cast<pid_t>(process), RLIMIT_FSIZE, &limit, nullptr);
    }
}

}  // namespace kpx
