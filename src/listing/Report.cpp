// The report of a configuration for a plant's documents.
#include "listing/Report.h"

#include <algorithm>
#include <span>
#include <vector>

#include "listing/ListRows.h"

namespace vk32 {
namespace {

using Rows = std::span<const ListedValue>;

constexpr const char* Style = R"(@page { margin: 18mm 16mm; }
body { font: 10pt/1.35 "DejaVu Sans", Arial, sans-serif; color: #1a1c1a; max-width: 178mm; margin: 0 auto; }
h1 { font-size: 17pt; margin: 0 0 4mm; }
h2 { font-size: 12pt; margin: 7mm 0 2mm; border-bottom: 0.5pt solid #777; break-after: avoid; }
h3 { font-size: 10pt; margin: 3mm 0 1mm; break-after: avoid; }
table { border-collapse: collapse; width: 100%; }
thead { display: table-header-group; }
tr { break-inside: avoid; }
th, td { text-align: left; vertical-align: top; padding: 0.8mm 2mm 0.8mm 0; border-bottom: 0.3pt solid #bbb; }
table.fields th { width: 45%; font-weight: normal; color: #444; }
table.plant td { width: 30%; height: 9mm; border-bottom: 0.5pt solid #333; }
)";

std::string Escaped(std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    switch (c) {
      case '&': escaped += "&amp;"; break;
      case '<': escaped += "&lt;"; break;
      case '>': escaped += "&gt;"; break;
      case '"': escaped += "&quot;"; break;
      default: escaped += static_cast<unsigned char>(c) < 32 ? ' ' : c;
    }
  }
  return escaped;
}

std::string Cell(const char* tag, std::string_view bytes) {
  return std::string("<") + tag + ">" + Escaped(Printable(bytes)) + "</" + tag + ">";
}

std::string HeadRow(const char* name, const std::string& value) {
  return value.empty() ? "" : std::string("<tr><th>") + name + "</th><td>" + Escaped(value) + "</td></tr>\n";
}

/// The first rows that have the same page, or page and group.
template <class Same>
Rows TakeWhile(Rows& rows, Same same) {
  std::size_t count = 0;
  while (count < rows.size() && same(rows[count], rows[0])) ++count;
  const Rows taken = rows.first(count);
  rows = rows.subspan(count);
  return taken;
}

bool SamePage(const ListedValue& a, const ListedValue& b) { return a.page == b.page; }
bool SameGroup(const ListedValue& a, const ListedValue& b) { return SamePage(a, b) && a.group == b.group; }
bool SameField(const ListedValue& a, const ListedValue& b) { return a.field == b.field; }

std::string TableOf(const std::vector<Rows>& groups) {
  std::string html = "<table class=\"rows\"><thead><tr><th></th>";
  for (const ListedValue& value : groups[0]) html += Cell("th", value.field);
  html += "</tr></thead><tbody>\n";
  for (const Rows group : groups) {
    html += "<tr>" + Cell("th", group[0].group);
    for (const ListedValue& value : group) html += Cell("td", value.Text());
    html += "</tr>\n";
  }
  return html + "</tbody></table>\n";
}

std::string FieldsOf(Rows group) {
  std::string html = group[0].group.empty() ? "" : Cell("h3", group[0].group) + "\n";
  html += "<table class=\"fields\">\n";
  for (const ListedValue& value : group)
    html += "<tr>" + Cell("th", value.field) + Cell("td", value.Text()) + "</tr>\n";
  return html + "</table>\n";
}

std::string PageOf(Rows page) {
  std::string html = Cell("h2", page[0].page) + "\n";
  std::vector<Rows> table;
  const auto endTable = [&] {
    if (!table.empty()) html += TableOf(table);
    table.clear();
  };
  while (!page.empty()) {
    const Rows group = TakeWhile(page, SameGroup);
    if (!table.empty() && !std::ranges::equal(table[0], group, SameField)) endTable();
    if (group[0].IsInTable()) {
      table.push_back(group);
    } else {
      endTable();
      html += FieldsOf(group);
    }
  }
  endTable();
  return html;
}

/// `kind`: "Configuration"
std::string Document(const char* kind, const ReportHead& head, const std::string& content) {
  const std::string title = Escaped(head.product) + " " + kind;
  std::string html = "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n<title>" + title +
                     "</title>\n<style>\n" + Style + "</style>\n</head>\n<body>\n<h1>" + title +
                     "</h1>\n<table class=\"fields\">\n" + HeadRow("Product", head.product) +
                     HeadRow("Model", head.model) + HeadRow("Source", head.source) + HeadRow("Date", head.date) +
                     HeadRow("Program", head.program) + "</table>\n<table class=\"plant\">\n";
  for (const char* room : {"Plant", "Line", "Name", "Signature"}) {
    html += std::string("<tr><th>") + room + "</th><td></td></tr>\n";
  }
  return html + "</table>\n" + content + "</body>\n</html>\n";
}

}  // namespace

std::string ToUtf8(std::string_view bytes) {
  std::string text;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x80) {
      text += c;
    } else {
      text += static_cast<char>(0xC0 | (byte >> 6));
      text += static_cast<char>(0x80 | (byte & 0x3F));
    }
  }
  return text;
}

std::string Printable(std::string_view bytes) {
  std::string text(bytes);
  for (char& c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 32 || (byte >= 127 && byte < 160)) c = '?';
  }
  return ToUtf8(text);
}

std::string TextReport(const Listing& listing) {
  std::string text, page, group;
  for (const ListedValue& row : ForReading(listing)) {
    if (row.page != page) text += "\n" + row.page + "\n";
    if (!row.group.empty() && (row.page != page || row.group != group)) text += "  " + Printable(row.group) + "\n";
    page = row.page, group = row.group;
    text += (group.empty() ? "  " : "    ") + Printable(row.field) + ": " + Printable(row.Text()) + "\n";
  }
  return text;
}

Listing ForReading(Listing listing) {
  listing = Shown(std::move(listing));
  Listing kept;
  for (Rows rows = listing; !rows.empty();) {
    const Rows group = TakeWhile(rows, SameGroup);
    if (!group[0].IsInTable() || !std::ranges::all_of(group, &ListedValue::IsBlank))
      kept.insert(kept.end(), group.begin(), group.end());
  }
  return kept;
}

std::string HtmlReport(const ReportHead& head, const Listing& listing) {
  std::string content;
  const Listing shown = ForReading(listing);
  for (Rows rows = shown; !rows.empty();) content += PageOf(TakeWhile(rows, SamePage));
  return Document("Configuration", head, content);
}

std::string HtmlComparison(const ReportHead& head, const std::string& summary, const std::string& left,
                           const std::string& right, const std::vector<Difference>& fields) {
  std::string content = "<h2>" + Escaped(summary) + "</h2>\n<table class=\"rows\"><thead><tr><th></th>";
  for (const std::string& title : {std::string("Page and field"), left, right})
    content += "<th>" + Escaped(title) + "</th>";
  content += "</tr></thead><tbody>\n";
  for (const Difference& field : fields) {
    content += std::string("<tr><td>") + (field.differs ? "≠" : "") + "</td>" + Cell("td", field.Words()) +
               Cell("td", ValueCell(field.left).text) + Cell("td", ValueCell(field.right).text) + "</tr>\n";
  }
  return Document("Comparison", head, content + "</tbody></table>\n");
}

}  // namespace vk32
