// Reports on paper.
#include "Paper.h"

#include <QBuffer>
#include <QFont>
#include <QLocale>
#include <QPageSize>
#include <QPdfWriter>
#include <QTextDocument>

namespace vk32 {
namespace {

constexpr int DotsPerInch = 600;
constexpr QMarginsF Margins(18, 16, 18, 16);  // mm

QPageSize UsualPaper() {
  const bool inches = QLocale::system().measurementSystem() == QLocale::ImperialUSSystem;
  return QPageSize(inches ? QPageSize::Letter : QPageSize::A4);
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
    document.setHtml(QString::fromStdString(html));
    writer.setTitle(document.metaInformation(QTextDocument::DocumentTitle));
    document.print(&writer);
  }
  return pdf.data().toStdString();
}

}  // namespace vk32
