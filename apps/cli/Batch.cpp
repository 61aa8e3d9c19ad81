// Many configurations from a template and a table.
#include "cli/Batch.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <vector>

#include "cli/Commands.h"
#include "cli/Configuration.h"
#include "cli/Csv.h"
#include "cli/Edit.h"
#include "cli/FileContent.h"
#include "platform/Paths.h"

namespace vk32 {
namespace {

constexpr const char* Verified = "verified";

struct Row {
  std::string name, port;
  std::vector<Assignment> assignments;
  std::string file, fingerprint;  // of its configuration
};

/// Tells a changed configuration from the one that a gateway has got.
std::string Fingerprint(const std::string& content) {
  std::uint64_t hash = 14695981039346656037u;
  for (const char c : content) hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211u;
  char text[17];
  std::snprintf(text, sizeof text, "%016llx", static_cast<unsigned long long>(hash));
  return text;
}

[[noreturn]] void RefuseTable(const BatchOptions& options, const std::string& why) {
  throw Failure(ExitStatus::FileRefused, options.table + ": " + why);
}

Row RowOf(const BatchOptions& options, const CsvRow& heads, const CsvRow& cells, std::size_t number) {
  const std::string where = "row " + std::to_string(number);
  if (cells.size() > heads.size()) {
    RefuseTable(options, where + " has " + std::to_string(cells.size()) + " cells, and the first line names " +
                             std::to_string(heads.size()) + " columns.");
  }
  Row row{where, options.port, {}, {}, {}};
  for (std::size_t i = 0; i < cells.size(); ++i) {
    if (cells[i].empty()) continue;
    if (Lower(heads[i]) == "name") {
      row.name = cells[i];
    } else if (Lower(heads[i]) == "port") {
      row.port = cells[i];
    } else {
      row.assignments.push_back({heads[i], cells[i]});
    }
  }
  if (FileNameOf(row.name) != row.name) RefuseTable(options, "the name \"" + row.name + "\" can't be a file's.");
  return row;
}

std::vector<Row> ReadRows(const BatchOptions& options) {
  const std::vector<CsvRow> table = ParseCsv(ContentOf(options.table));
  if (table.size() < 2) RefuseTable(options, "the table has no rows below its first line, which names the fields.");
  std::vector<Row> rows;
  std::set<std::string> names;
  for (std::size_t i = 1; i < table.size(); ++i) {
    rows.push_back(RowOf(options, table[0], table[i], i));
    if (!names.insert(rows.back().name).second) RefuseTable(options, "two rows are named " + rows.back().name + ".");
  }
  return rows;
}

/// Before the rows have their turn, each of which would tell the same.
void CheckColumns(World& world, const BatchOptions& options, const std::vector<Row>& rows) {
  const Listing listing = LoadFile(world, options.configuration).listing;
  std::set<std::string> known;
  std::string unknown;
  for (const Row& row : rows) {
    for (const Assignment& assignment : row.assignments) {
      if (!known.insert(assignment.field).second) continue;
      try {
        FindField(listing, assignment.field);
      } catch (const Failure& failure) {
        unknown += "\n" + options.table + ": " + failure.what();
      }
    }
  }
  if (!unknown.empty()) throw Failure(ExitStatus::WrongUsage, unknown.substr(1));
}

/// Two names of one port are one.
std::string DeviceOf(const World& world, const std::string& port) {
  if (const auto device = world.names.Find(port)) return device->path;
  std::error_code ignored;
  const std::string path = TextOf(std::filesystem::weakly_canonical(PathOf(port), ignored));
  return path.empty() ? port : path;
}

/// A row may come to the shared port when the user has changed the gateway there; a port of its own is one gateway's.
void CheckPorts(const World& world, const BatchOptions& options, const std::vector<Row>& rows) {
  std::set<std::string> ports, devices;
  for (const Row& row : rows) {
    if (row.port.empty()) RefuseTable(options, row.name + " has no port. Give --port, or a column Port.");
    const bool shared = row.port == options.port && !world.console.yes;
    const bool isNew = ports.insert(row.port).second;
    if (isNew ? devices.insert(DeviceOf(world, row.port)).second : shared) continue;
    RefuseTable(options, "more than one row wants " + row.port + ", and nobody is asked to change the gateway.");
  }
}

/// Makes the file of each row. Failure of the first that can't be made, after all have had their turn.
void MakeFiles(World& world, const BatchOptions& options, const std::string& folder, std::vector<Row>& rows) {
  MakeFolder(folder);
  const Target target = TargetOfFile(options.configuration);
  const TemporaryFolder scratch;
  FileGroup files(options.out.empty() ? Lasting::ThisRun : Lasting::ForGood);
  std::optional<Program> program;  // one for all rows, until one is refused
  std::optional<Failure> first;
  const auto tell = [&](const std::string& words, const Failure& failure) {
    if (failure.status == ExitStatus::Stopped) throw Failure(failure);
    world.console.err << words << failure.what() << "\n";
    if (!first) first = failure;
  };
  for (Row& row : rows) {
    world.loop.RunDue();
    row.file = folder + "/" + row.name + ".cfg";
    try {
      if (!program) program.emplace(world, target);
      const std::string content = Edited(*program, options.configuration, row.assignments, scratch);
      row.fingerprint = Fingerprint(content);
      files.Add(row.file, content);
    } catch (const Failure& failure) {
      program.reset();
      tell(row.name + ": ", failure);
    }
  }
  try {
    files.Store();
  } catch (const Failure& failure) {
    tell("", failure);
  }
  if (first)
    throw Failure(first->status, "Not all rows have a file" +
                                     std::string(options.write ? "; nothing was written to a gateway." : "."));
}

/// What became of each gateway, kept in a file.
class Results {
 public:
  explicit Results(std::string path) : path_(std::move(path)) {
    if (!IsThere(path_)) return;
    for (const CsvRow& row : ParseCsv(ContentOf(path_))) {
      if (row.size() == Columns && row != Heads) rows_[row[0]] = row;
    }
  }
  bool IsVerified(const Row& row) const {
    const auto kept = rows_.find(row.name);
    return kept != rows_.end() && kept->second[2] == Verified && kept->second[3] == row.fingerprint;
  }
  void Keep(const Row& row, const std::string& result) {
    rows_[row.name] = {row.name, row.port, result, row.fingerprint};
    std::string content = CsvLine(Heads);
    for (const auto& [name, cells] : rows_) content += CsvLine(cells);
    Store(path_, content);
  }

 private:
  static constexpr std::size_t Columns = 4;
  inline static const CsvRow Heads{"Name", "Port", "Result", "Configuration"};

  std::string path_;
  std::map<std::string, CsvRow> rows_;
};

void WriteRow(World& world, const Row& row, bool asks, Results& results) {
  if (asks) world.Confirm("Connect the gateway " + row.name + " to " + row.port + ".");
  world.LeaveIfStopped(row.name + " has not been written.");
  results.Keep(row, "begun");  // for the case that nothing comes any more
  try {
    WriteConfiguration(world, {row.file, row.port, row.name, {}, true});
    results.Keep(row, Verified);
  } catch (const Failure& failure) {
    results.Keep(row, failure.what());
    throw;
  }
}

void WriteRows(World& world, const BatchOptions& options, const std::vector<Row>& rows) {
  world.RequireUser();
  Results results(options.results.empty() ? TextOf(PathOf(options.table).replace_extension(".results.csv"))
                                          : options.results);
  std::optional<Failure> first;
  for (const Row& row : rows) {
    if (results.IsVerified(row)) {
      world.console.err << row.name << " is done already.\n";
      continue;
    }
    try {
      WriteRow(world, row, row.port == options.port, results);
      world.console.out << row.name << ": " << Verified << "\n";
    } catch (const Failure& failure) {
      if (failure.status == ExitStatus::Stopped) throw;
      world.console.out << row.name << ": " << failure.what() << "\n";
      if (!first) first = failure;
    }
  }
  if (first)
    throw Failure(first->status, "Not all gateways are done. The same command goes on with those that are left.");
}

}  // namespace

void RunBatch(World& world, const BatchOptions& options) {
  if (options.out.empty() && !options.write) {
    throw Failure(ExitStatus::WrongUsage, "Give --out DIR for files, or --write for gateways.");
  }
  std::vector<Row> rows = ReadRows(options);
  CheckColumns(world, options, rows);
  if (options.write) CheckPorts(world, options, rows);
  const TemporaryFolder temporary;
  MakeFiles(world, options, options.out.empty() ? temporary.path : options.out, rows);
  if (options.write) return WriteRows(world, options, rows);
  world.console.err << rows.size() << " files are in " << options.out << ".\n";
}

}  // namespace vk32
