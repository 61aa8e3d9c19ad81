// What jobs on the command line take.
#include "Jobs.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "Child.h"
#include "platform/SystemEventLoop.h"

namespace vk32::bench {
namespace {

namespace fs = std::filesystem;

constexpr int Runs = 9, BatchRuns = 3, BatchRows = 1000;
const std::string Template = VK32_EXAMPLES "/batch/template.cfg";

/// As on a machine that does nothing else.
Figures Take(int runs, std::vector<std::string> words) {
  words.insert(words.begin(), VK32_PROGRAMS "/vk32-cli");
  Figures times;
  for (int run = 0; run < runs; ++run) {
    const Time start = MonotonicNow();
    Child job(words);
    job.Await();
    times.Add(Milliseconds(MonotonicNow() - start - job.QueueTime()));
  }
  return times;
}

}  // namespace

void Jobs(Table& table) {
  const fs::path folder = fs::temp_directory_path() / ("vk32-bench-" + std::to_string(getpid()));
  fs::create_directory(folder);
  const std::string rows = folder / "rows.csv";
  std::ofstream csv(rows);
  csv << "Name,IP Address,Socket Timeout\n";
  for (int row = 0; row < BatchRows; ++row) {
    csv << "gateway-" << row << ",10.0." << row / 250 << "." << row % 250 + 1 << "," << row % 50 + 10 << "\n";
  }
  csv.close();
  table.Row("vk32-cli show: a file", Take(Runs, {"show", Template}), 20, "ms");
  table.Row("vk32-cli check: a file", Take(Runs, {"check", Template}), 20, "ms");
  table.Row("vk32-cli diff: two files", Take(Runs, {"diff", Template, Template}), 20, "ms");
  table.Row("vk32-cli batch: 1000 rows to files", Take(BatchRuns, {"batch", Template, rows, "--out", folder / "out"}),
            2000, "ms");
  fs::remove_all(folder);
}

}  // namespace vk32::bench
