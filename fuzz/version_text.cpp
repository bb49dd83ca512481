#include "values/Unicode.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

// Whatever a web site answers becomes a text, and no more of it is quoted than has room in a line.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text = kpx::textFromMacOSRoman({reinterpret_cast<const char*>(data), size});
    if (kpx::characterCount(text) != size) {
        std::abort();
    }
    constexpr std::size_t most = 80;
    for (const std::string& read : {text, std::string(reinterpret_cast<const char*>(data), size)}) {
        const std::string line = kpx::beginningInOneLine(read, most);
        if (kpx::characterCount(line) > most || line.find_first_of("\r\n\t\v\f") != std::string::npos) {
            std::abort();
        }
    }
    return 0;
}
