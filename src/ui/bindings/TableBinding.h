#pragma once

#include "controls/TableView.h"
#include "region/Environment.h"

#include <functional>

namespace kpx {

class RecordTableView;

/// `environment` gives the instant and region in which values are shown.
void bind(TableView& control, RecordTableView& widget, std::function<Environment()> environment);

}  // namespace kpx
