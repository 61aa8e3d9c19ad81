// The report of a configuration for a plant's documents.
#pragma once

#include <string>
#include <string_view>

#include "listing/Listing.h"

namespace vk32 {

/// The texts of controls are bytes of Latin-1.
std::string ToUtf8(std::string_view bytes);
/// Without what no row shows: the rows of a table that are empty, and what its page doesn't show.
Listing ForReading(Listing listing);

/// In UTF-8, on one line, with "?" for what commands a terminal.
std::string Printable(std::string_view bytes);
/// Page by page, in UTF-8, as a person reads it in a terminal or a text file.
std::string TextReport(const Listing& listing);

/// In UTF-8. Those that are empty are left out.
struct ReportHead {
  std::string product, model;
  std::string source;  // "COM3", or a file's name
  std::string date;
  std::string program;  // with its version
};

/// One HTML file that needs no other, made to be printed on A4 or Letter. Reports of equal values are equal but for the
/// lines of date and source.
std::string HtmlReport(const ReportHead& head, const Listing& listing);

/// Two configurations side by side, made the same. `left`, `right`: what stands above the columns, in UTF-8 and in
/// lines; `fields`: those that are shown.
std::string HtmlComparison(const ReportHead& head, const std::string& summary, const std::string& left,
                           const std::string& right, const std::vector<Difference>& fields);

}  // namespace vk32
