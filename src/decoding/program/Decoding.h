#pragma once

#include "decoding/DecodingRequest.h"

#include <functional>
#include <string_view>

namespace kpx {

/// Reads the picture or the pages asked for, each on white and upright, and writes the answer (PageStream.h).
/// A photograph is made smaller while it is read; a drawing fills the room, for it stays sharp; no other picture
/// is enlarged. What kind of file it is its content tells, not its name.
DecodingResult decode(const DecodingRequest& request, const std::function<void(std::string_view bytes)>& write);

}  // namespace kpx
