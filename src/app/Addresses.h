#pragma once

namespace kpx {

// The maker's web site. Settings of the build: KPX_VERSION_FILE_ADDRESS and KPX_PRODUCT_PAGE_ADDRESS.
extern const char* const versionFileAddress;
extern const char* const productPageAddress;

}  // namespace kpx
