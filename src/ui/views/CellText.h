#pragma once

#include "region/Environment.h"
#include "values/Record.h"

#include <QString>

#include <string>

namespace kpx {

/// What a table shows for a value of the column: dates in short style, costs grouped with two decimals.
QString cellText(const std::string& column, const Value& value, const Environment& environment);

/// Numbers stand right, or their digits would not line up, in languages read from the right too; all else stands where
/// a line begins.
Qt::Alignment cellAlignment(const std::string& column);

/// Room for the column's usual contents, in the width of an average character.
int usualCharacters(const std::string& column);

/// Whether it holds names or notes, of any length, rather than dates, counts or amounts.
bool isTextColumn(const std::string& column);

/// Why a cell of the column is drawn in red.
QString redCellMeaning(const std::string& column);

}  // namespace kpx
