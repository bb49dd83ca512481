#include "fuzz/ThrowAwayFolder.h"
#include "region/LocalizedStrings.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

// The input is a table of translations, and its first line a translation whose placeholders are filled in. Nothing in
// a table makes a text blank.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const kpx::ThrowAwayFolder folder;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    folder.write("en.lproj/Localizable.strings", bytes);
    const kpx::LocalizedStrings strings(folder.path(), "en");
    for (const std::string_view key : {"OK", "Cancel", "Maintain Drugs…"}) {
        if (strings(key).empty()) {
            std::abort();
        }
    }
    static_cast<void>(kpx::formatted(bytes.substr(0, bytes.find('\n')), {"Ann", "%@ %2$@ %d"}));
    return 0;
}
