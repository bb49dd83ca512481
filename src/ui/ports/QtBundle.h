#pragma once

#include "app/Ports.h"

namespace kpx {

/// The program's own files: "share/velmora" beside the folder of the program, installed and in a build
/// tree alike.
class QtBundle : public Bundle {
public:
    std::filesystem::path resources() override;
    std::string shortVersionString() override;
};

}  // namespace kpx
