#pragma once

#include "region/TimeZone.h"

#include <memory>
#include <string_view>

namespace kpx {

/// A zone described by a rule of its own, without a name in any database. Null for a text that is no rule.
///
/// | rule                         | means                                                                |
/// |------------------------------|----------------------------------------------------------------------|
/// | "JST-9"                      | nine hours ahead, always                                             |
/// | "CET-1CEST,M3.5.0,M10.5.0/3" | one hour ahead, and one more from the last Sunday of March, 02:00,   |
/// |                              | to the last Sunday of October, 03:00                                 |
/// | "<+03>-3<+04>,J60,300/-1"    | days of the year, from 1 without 29 February or from 0 with it,      |
/// |                              | and times of day from -167 to 167 hours                              |
/// | "EST5EDT"                    | no days given: from the second Sunday of March to the first of       |
/// |                              | November                                                             |
std::shared_ptr<const TimeZone> posixTimeZone(std::string_view rule);

}  // namespace kpx
