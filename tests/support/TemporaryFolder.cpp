#include "tests/support/TemporaryFolder.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace kpx::test {

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() {
    std::string name = fs::temp_directory_path() / "kpx-test-XXXXXX";
    if (!mkdtemp(name.data())) {
        throw std::runtime_error("no temporary folder");
    }
    m_path = name;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(m_path, ignored);
}

std::string readFile(const fs::path& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

void writeFile(const fs::path& path, std::string_view bytes) {
    std::ofstream stream(path, std::ios::binary | std::ios::trunc);
    stream << bytes;
    if (!stream.flush()) {
        throw std::runtime_error("cannot write " + path.string());
    }
}

std::vector<std::string> namesIn(const fs::path& folder) {
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        names.push_back(entry.path().filename());
    }
    std::sort(names.begin(), names.end());
    return names;
}

bool holdsInChild(const std::function<bool()>& condition) {
    const pid_t child = fork();
    if (child == 0) {
        _exit(condition() ? EXIT_SUCCESS : EXIT_FAILURE);
    }
    int status = 0;
    return child > 0 && waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == EXIT_SUCCESS;
}

bool becomeNobody() {
    constexpr uid_t nobody = 65534;
    return geteuid() != 0 || seteuid(nobody) == 0;
}

}  // namespace kpx::test
