#pragma once

#include "app/Ports.h"

#include <QNetworkAccessManager>

#include <chrono>

namespace kpx {

/// One plain request at a time, over https alone, after redirects too; anything else gets no answer. Of a long
/// answer the first 64 kB are read, and one whose headers do not end is none. While it waits the
/// window is still drawn, but takes no input.
class QtWebFetch : public WebFetch {
public:
    /// The time-out is for the whole request, not for a silence in it.
    explicit QtWebFetch(std::chrono::milliseconds timeOut = std::chrono::seconds(15));

    std::optional<Response> fetch(const std::string& address) override;

private:
    std::chrono::milliseconds m_timeOut;
    QNetworkAccessManager m_network;
};

}  // namespace kpx
