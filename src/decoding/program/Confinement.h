#pragma once

namespace kpx {

/// What this process gives up before it looks at a foreign file: from here on it may take 512 MB and five
/// seconds of processor time more than it has by now, write no file, reach no network, start no program, and it
/// dies with its parent. Whatever is in the file, that is the worst that it can do.
void confine();

}  // namespace kpx
