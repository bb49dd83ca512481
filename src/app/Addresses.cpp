#include "app/Addresses.h"

namespace kpx {

const char* const versionFileAddress = KPX_VERSION_FILE_ADDRESS;
const char* const productPageAddress = KPX_PRODUCT_PAGE_ADDRESS;

}  // namespace kpx
