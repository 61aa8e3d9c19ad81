// The table of the measurements.
#include "Table.h"

#include <cstdio>

namespace vk32::bench {
namespace {

std::string Number(double number) {
  char text[32];
  std::snprintf(text, sizeof text, number < 10 ? "%.3f" : "%.1f", number);
  return text;
}

}  // namespace

Table::Table() { std::printf("%-58s %8s  %17s %8s\n", "what", "median", "least to most", "limit"); }

void Table::Row(const std::string& what, const Figures& figures, double limit, const std::string& unit) {
  const bool over = limit != NoLimit && figures.Least() > limit;
  const bool noisy = !over && limit != NoLimit && figures.Median() > limit;
  anyOver_ = anyOver_ || over;
  const std::string range = Number(figures.Least()) + " to " + Number(figures.Most());
  std::printf("%-58s %8s  %17s %8s %-3s %s\n", what.c_str(), Number(figures.Median()).c_str(),
              figures.Count() > 1 ? range.c_str() : "", limit == NoLimit ? "-" : Number(limit).c_str(), unit.c_str(),
              over    ? "over"
              : noisy ? "too noisy"
                      : "ok");
  std::fflush(stdout);
}

}  // namespace vk32::bench
