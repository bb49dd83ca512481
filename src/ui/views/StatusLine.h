#pragma once

#include "ui/views/ElidedLabel.h"

namespace kpx {

/// Says what was done last. For assistive technology it is a status bar, and a new text is announced.
class StatusLine : public ElidedLabel {
    Q_OBJECT

public:
    explicit StatusLine(QWidget* parent = nullptr);
};

}  // namespace kpx
