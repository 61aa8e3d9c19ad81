// Many configurations from a template and a table.
#pragma once

#include <string>

#include "cli/World.h"

namespace vk32 {

struct BatchOptions {
  std::string configuration, table;  // a configuration file; rows of a CSV file
  std::string out;                   // folder that takes a file for each row
  bool write = false;                // each row to a gateway
  std::string port;                  // of the rows that name none
  std::string results;               // CSV file that keeps what became of each row; empty: beside the table
};

/// The columns of the table are fields, by the names of the listing; "Name" names the row, "Port" its port. An empty
/// cell leaves what the template has. Nothing is written to a gateway before every row has its file; a row whose
/// gateway was verified in an earlier run is passed over.
void RunBatch(World& world, const BatchOptions& options);

}  // namespace vk32
