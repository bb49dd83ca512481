#pragma once

#include "controls/Control.h"
#include "values/Date.h"

namespace kpx {

/// A date picker; holds an instant, time of day included.
class DateField : public Control {
public:
    using Control::Control;

    Date date() const { return m_date; }
    void setDate(Date date) {
        m_date = date;
        notify();
    }

    /// The shared graphical picker remembers here which field it serves.
    int tag() const { return m_tag; }
    void setTag(int tag) { m_tag = tag; }

    /// The user sets a date; runs the action.
    void userSetDate(Date date) {
        setDate(date);
        if (action) {
            action();
        }
    }
    std::function<void()> action;

private:
    Date m_date;
    int m_tag = -1;
};

}  // namespace kpx
