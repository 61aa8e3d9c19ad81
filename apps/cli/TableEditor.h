// Rows of the tables that are made in an editor of their own: routes and maps.
#pragma once

#include <map>
#include <string>

#include "cli/Program.h"
#include "listing/Listing.h"

namespace vk32 {

struct RowCell {
  ListedValue row;  // of the listing
  std::string value;
};
/// What a row's cells become, by the names of their labels.
using RowCells = std::map<std::string, RowCell>;

/// Whether the cell's row has an editor.
bool HasEditor(const Control& cell);
/// Changes the row, or adds it behind the last one. `cell`: one of the row. Failure if the editor does not take it.
void EditRow(Program& program, const Control& cell, const RowCells& cells);

}  // namespace vk32
