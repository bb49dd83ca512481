#include "decoding/DecodingRequest.h"
#include "decoding/program/Confinement.h"
#include "decoding/program/Decoding.h"

#include <QGuiApplication>

#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <string>

namespace kpx {

namespace {

/// As far as a request goes; more is none.
std::string standardInput() {
    constexpr std::size_t longest = PATH_MAX + 256;
    std::string text(longest, '\0');
    std::size_t length = 0;
    while (length < longest) {
        const ssize_t count = ::read(STDIN_FILENO, text.data() + length, longest - length);
        if (count == 0 || (count < 0 && errno != EINTR)) {
            break;
        }
        length += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
    text.resize(length);
    return text;
}

void writeToStandardOutput(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(STDOUT_FILENO, bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR) {
            std::_Exit(EXIT_FAILURE);  // nobody listens any more
        }
        bytes.remove_prefix(count > 0 ? static_cast<std::size_t>(count) : 0);
    }
}

}  // namespace

}  // namespace kpx

/// Shows one foreign file and ends. The window program starts it anew for each.
int main(int argc, char** argv) {
    // The toolkit's fonts and picture readers, and no screen.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // A desktop's theme would bring connections to that desktop along.
    for (const char* variable : {"QT_QPA_PLATFORMTHEME", "QT_QPA_GENERIC_PLUGINS", "QT_STYLE_OVERRIDE"}) {
        qunsetenv(variable);
    }
    const QGuiApplication application(argc, argv);
    const auto request = kpx::requestFromText(kpx::standardInput());
    if (!request) {
        return static_cast<int>(kpx::DecodingResult::CannotBeShown);
    }
    kpx::confine();
    const kpx::DecodingResult result = kpx::decode(*request, kpx::writeToStandardOutput);
    // What is left in memory goes with the process; tidying it up could fail no better than reading did.
    std::_Exit(static_cast<int>(result));
}
