#pragma once

namespace kpx {

// The maker's web site. A reserved example domain until there is one.
inline constexpr char versionFileAddress[] = "https://velmora.example/KPX/version.txt";
inline constexpr char productPageAddress[] = "https://velmora.example/KPX/";

}  // namespace kpx
