#pragma once

#include "app/Ports.h"

#include <QNetworkAccessManager>

namespace kpx {

/// One plain request at a time. While it waits the window is still drawn, but takes no input.
class QtWebFetch : public WebFetch {
public:
    std::optional<Response> fetch(const std::string& address) override;

private:
    QNetworkAccessManager m_network;
};

}  // namespace kpx
