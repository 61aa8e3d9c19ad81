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
constexpr const char *NameColumn = "name", *PortColumn = "port";

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

bool IsColumn(const std::string& head, const char* name) { return Lower(head) == name; }

Row RowOf(const BatchOptions& options, const CsvCells& heads, const CsvRow& line) {
  const CsvCells& cells = line.cells;
  const std::string where = "line " + std::to_string(line.line);
  if (cells.size() > heads.size()) {
    RefuseTable(options, where + " has " + std::to_string(cells.size()) + " cells, and the first line names " +
                             std::to_string(heads.size()) + " columns.");
  }
  Row row{where, options.port, {}, {}, {}};
  for (std::size_t i = 0; i < cells.size(); ++i) {
    if (cells[i].empty()) continue;
    if (heads[i].empty()) RefuseTable(options, where + " has \"" + cells[i] + "\" in a column without a name.");
    if (IsColumn(heads[i], NameColumn)) {
      row.name = cells[i];
    } else if (IsColumn(heads[i], PortColumn)) {
      row.port = cells[i];
    } else {
      row.assignments.push_back({heads[i], cells[i]});
    }
  }
  if (FileNameOf(row.name) != row.name) RefuseTable(options, "the name \"" + row.name + "\" can't be a file's.");
  return row;
}

std::vector<Row> RowsOf(const BatchOptions& options, const std::vector<CsvRow>& table) {
  std::vector<Row> rows;
  std::set<std::string> names;
  for (std::size_t i = 1; i < table.size(); ++i) {
    rows.push_back(RowOf(options, table[0].cells, table[i]));
    if (!names.insert(rows.back().name).second) RefuseTable(options, "two rows are named " + rows.back().name + ".");
  }
  return rows;
}

/// Once for all rows, which would each tell the same. A spreadsheet saves empty columns, too.
void CheckColumns(World& world, const BatchOptions& options, const CsvCells& heads) {
  const Listing listing = LoadFile(world, options.configuration).listing;
  std::set<std::string> columns;
  std::string refused;
  for (const std::string& head : heads) {
    if (head.empty()) continue;
    try {
      const bool field = !IsColumn(head, NameColumn) && !IsColumn(head, PortColumn);
      const std::string column = field ? listing[FindField(listing, head)].Path() : Lower(head);
      if (!columns.insert(column).second)
        throw Failure(ExitStatus::WrongUsage, "More than one column is " + head + ".");
    } catch (const Failure& failure) {
      refused += "\n" + options.table + ": " + failure.what();
    }
  }
  if (!refused.empty()) throw Failure(ExitStatus::WrongUsage, refused.substr(1));
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
    world.LookForStop();
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
    const std::vector<CsvRow> kept = ReadCsv(path_);
    if (!kept.empty() && kept[0].cells != Heads) {
      throw Failure(ExitStatus::FileRefused,
                    path_ + " holds something else than the results of a batch. Give --results another file.");
    }
    for (const CsvRow& row : kept) {
      if (row.cells.size() == Heads.size() && row.cells != Heads) rows_[row.cells[0]] = row.cells;
    }
  }
  bool IsVerified(const Row& row) const {
    const auto kept = rows_.find(row.name);
    return kept != rows_.end() && kept->second == Cells(row, Verified);
  }
  void Keep(const Row& row, const std::string& result) {
    rows_[row.name] = Cells(row, result);
    Store();
  }
  void Store() const {
    std::string content = CsvLine(Heads);
    for (const auto& [name, cells] : rows_) content += CsvLine(cells);
    vk32::Store(path_, content);
  }

 private:
  inline static const CsvCells Heads{"Name", "Port", "Result", "Configuration"};
  static CsvCells Cells(const Row& row, const std::string& result) {
    return {row.name, row.port, result, row.fingerprint};
  }

  std::string path_;
  std::map<std::string, CsvCells> rows_;
};

/// Failure of the row alone, if any. Throws what ends the batch.
std::optional<Failure> WriteRow(World& world, const Row& row, bool asks, Results& results) {
  results.Store();  // what can't be kept is not begun
  if (asks) world.Confirm("Connect the gateway " + row.name + " to " + row.port + ".");
  world.LeaveIfStopped(row.name + " has not been written.");
  results.Keep(row, "begun");  // for the case that nothing comes any more
  std::optional<Failure> failure;
  try {
    WriteConfiguration(world, {row.file, row.port, row.name, {}, true});
  } catch (const Failure& caught) {
    failure = caught;
  }
  const std::string result = failure ? failure->what() : Verified;
  try {
    results.Keep(row, result);
  } catch (const Failure& notKept) {
    throw Failure(notKept.status, row.name + ": " + result + "\n" + notKept.what());
  }
  if (failure && failure->status == ExitStatus::Stopped) throw Failure(*failure);
  world.console.out << row.name << ": " << result << "\n";
  return failure;
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
    const std::optional<Failure> failure = WriteRow(world, row, row.port == options.port, results);
    if (!first) first = failure;
  }
  if (first)
    throw Failure(first->status, "Not all gateways are done. The same command goes on with those that are left.");
}

}  // namespace

void RunBatch(World& world, const BatchOptions& options) {
  if (options.out.empty() && !options.write) {
    throw Failure(ExitStatus::WrongUsage, "Give --out DIR for files, or --write for gateways.");
  }
  const std::vector<CsvRow> table = ReadCsv(options.table);
  if (table.size() < 2) RefuseTable(options, "the table has no rows below its first line, which names the fields.");
  CheckColumns(world, options, table[0].cells);
  std::vector<Row> rows = RowsOf(options, table);
  if (options.write) CheckPorts(world, options, rows);
  const TemporaryFolder temporary;
  MakeFiles(world, options, options.out.empty() ? temporary.path : options.out, rows);
  if (options.write) return WriteRows(world, options, rows);
  world.console.err << rows.size() << (rows.size() == 1 ? " file is in " : " files are in ") << options.out << ".\n";
}

}  // namespace vk32
