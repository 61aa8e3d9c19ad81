// Reports on paper.
#include "Paper.h"

#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QFont>
#include <QGuiApplication>
#include <QLocale>
#include <QPageSize>
#include <QPdfWriter>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextTable>

#include <algorithm>
#include <cmath>

namespace vk32 {
namespace {

constexpr int DotsPerInch = 96;               // of the layout; what is drawn has no dots
constexpr QMarginsF Margins(16, 16, 16, 16);  // mm

/// What Qt's own layout understands; it takes the widths and the lines of a browser's style otherwise.
constexpr const char* Style = R"(h1 { font-size: 17pt; }
h2 { font-size: 12pt; margin-top: 18px; margin-bottom: 4px; }
h3 { font-size: 10pt; margin-top: 8px; margin-bottom: 2px; }
th { font-weight: normal; }
thead th { font-weight: bold; }
th, td { text-align: left; padding: 2px 8px 2px 0px; border-bottom: 1px solid #bbbbbb; }
table.plant th, table.plant td { padding-top: 16px; })";

QPageSize UsualPaper() {
  const bool inches = QLocale::system().measurementSystem() == QLocale::ImperialUSSystem;
  return QPageSize(inches ? QPageSize::Letter : QPageSize::A4);
}

QString ForPaper(const std::string& html) {
  QString text = QString::fromStdString(html);
  text.remove(QRegularExpression(QStringLiteral("<style>.*</style>"), QRegularExpression::DotMatchesEverythingOption));
  QStringList tables = text.split(QStringLiteral("<table "));
  for (QString& table : tables) {
    // The first column of rows holds a sign or a slot alone.
    const int width = table.startsWith(QStringLiteral("class=\"rows\"")) ? 8 : 30;
    table.replace(QStringLiteral("<tr><th>"), QStringLiteral("<tr><th width=\"%1%\">").arg(width));
  }
  return tables.join(QStringLiteral("<table width=\"100%\" cellspacing=\"0\" "));
}

/// Where the cells of a row stand, in dots of the whole document.
QRectF PlaceOf(const QTextTable& table, int row) {
  QRectF place;
  for (int column = 0; column < table.columns(); ++column) {
    const QTextTableCell cell = table.cellAt(row, column);
    QTextBlock block = cell.firstCursorPosition().block();
    for (const QTextBlock last = cell.lastCursorPosition().block(); block.isValid(); block = block.next()) {
      place |= table.document()->documentLayout()->blockBoundingRect(block);
      if (block == last) break;
    }
  }
  return place;
}

/// How far down the next page is for what does not fit on its own but on one; else 0.
qreal ToNextPage(const QTextDocument& document, const QRectF& place) {
  const qreal page = document.pageSize().height();
  const qreal next = (std::floor(place.top() / page) + 1) * page;
  return place.bottom() <= next || place.height() > page ? 0 : next - place.top();
}

/// The headings right above a table go where its first row below the head is.
void KeepHeadings(const QTextTable& table) {
  QTextBlock first;
  for (QTextBlock block = table.firstCursorPosition().block().previous(); block.blockFormat().headingLevel() > 0;
       block = block.previous()) {
    first = block;
  }
  if (!first.isValid()) return;
  const QRectF heading = table.document()->documentLayout()->blockBoundingRect(first);
  const int row = std::min(table.format().headerRowCount(), table.rows() - 1);
  if (ToNextPage(*table.document(), heading | PlaceOf(table, row)) == 0) return;
  QTextBlockFormat format = first.blockFormat();
  format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
  QTextCursor(first).setBlockFormat(format);
}

/// Qt breaks the lines of a row over two pages: it is moved down to the second one.
void KeepRowsWhole(const QTextTable& table) {
  for (int row = 0; row < table.rows(); ++row) {
    const qreal down = ToNextPage(*table.document(), PlaceOf(table, row));
    for (int column = 0; column < table.columns() && down > 0; ++column) {
      QTextTableCell cell = table.cellAt(row, column);
      QTextTableCellFormat format = cell.format().toTableCellFormat();
      format.setTopPadding(format.topPadding() + down);
      cell.setFormat(format);
    }
  }
}

}  // namespace

std::string PdfOf(const std::string& html) {
  QBuffer pdf;
  pdf.open(QIODevice::WriteOnly);
  {
    QPdfWriter writer(&pdf);
    writer.setResolution(DotsPerInch);
    writer.setPageLayout(QPageLayout(UsualPaper(), QPageLayout::Portrait, Margins, QPageLayout::Millimeter));
    QTextDocument document;
    QFont font;
    font.setFamilies(QGuiApplication::font().families());
    font.setPointSize(10);
    document.setDefaultFont(font);
    document.setDefaultStyleSheet(QString::fromLatin1(Style));
    document.setHtml(ForPaper(html));
    document.setPageSize(writer.pageLayout().paintRectPixels(DotsPerInch).size());
    document.setDocumentMargin(0);
    for (QTextFrame* frame : document.rootFrame()->childFrames()) {
      const auto* table = qobject_cast<QTextTable*>(frame);
      if (!table) continue;
      KeepHeadings(*table);
      KeepRowsWhole(*table);
    }
    writer.setTitle(document.metaInformation(QTextDocument::DocumentTitle));
    document.print(&writer);
  }
  return pdf.data().toStdString();
}

}  // namespace vk32
