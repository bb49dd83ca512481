#pragma once

#include "app/Ports.h"

namespace kpx {

class QtClipboard : public Clipboard {
public:
    std::string address() override;
    void setText(const std::string& plain, const std::string& html) override;
};

}  // namespace kpx
