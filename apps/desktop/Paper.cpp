// Reports on paper.
#include "Paper.h"

#include <QBuffer>
#include <QFont>
#include <QGuiApplication>
#include <QLocale>
#include <QPageSize>
#include <QPdfWriter>
#include <QRegularExpression>
#include <QTextDocument>

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
  text.replace(QStringLiteral("<table "), QStringLiteral("<table width=\"100%\" cellspacing=\"0\" "));
  text.replace(QStringLiteral("<tr><th>"), QStringLiteral("<tr><th width=\"30%\">"));
  return text;
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
    writer.setTitle(document.metaInformation(QTextDocument::DocumentTitle));
    document.print(&writer);
  }
  return pdf.data().toStdString();
}

}  // namespace vk32
