#pragma once

namespace kpx::test {

class Guide;

/// A reminder is set on the schedule and the program closed. Its day comes, the desktop shows it, and a click on
/// it starts the program on that prescription; the reminder is gone.
void beReminded(Guide& guide);

}  // namespace kpx::test
