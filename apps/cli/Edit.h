// Fields of a configuration, found and set by the names of the listing.
#pragma once

#include <string>
#include <vector>

#include "cli/FileContent.h"
#include "cli/Program.h"
#include "listing/Listing.h"

namespace vk32 {

struct Assignment {
  std::string field;  // "Page/Group/Field", in any case; the pages and groups before it may be left out
  std::string value;
};

/// From "Page/Field=value". Failure if there is no "=".
Assignment ParseAssignment(const std::string& text);
/// The row that is meant. Failure, with the nearest names, if that is none or more than one.
std::size_t FindField(const Listing& listing, const std::string& name);
/// The place of an entry that the field takes, in any case. Failure that tells which there are.
std::size_t FindEntry(const ListedValue& row, const std::vector<std::string>& entries, const std::string& value);
/// In the order of the pages, as a later field can depend on an earlier one. Failure if a field does not take its
/// value.
void SetFields(Program& program, const std::vector<Assignment>& assignments);

/// Opens a file, sets fields and gives the content of the file with them. Failure if that would not have each value as
/// it was given. `program`: stands at the menu of the file's product, and does again if there is no failure. `scratch`:
/// where a file can stand on the way.
std::string Edited(Program& program, const std::string& file, const std::vector<Assignment>& assignments,
                   const TemporaryFolder& scratch);

}  // namespace vk32
