// The generator that draws every button picture and the application icon as files into one folder.
#include <QBuffer>
#include <QByteArray>
#include <QCommandLineParser>
#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QFont>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QString>
#include <QStringList>
#include <QTransform>
#include <cstdio>
#include <exception>
#include <stdexcept>
#include <string>
#include <vector>

#include "SvgDrawing.h"
#include "resources/Pictures.h"

namespace {

using vk32::PictureButtonRow;
using vk32::PictureFace;

constexpr int kIconSizes[] = {16, 22, 24, 32, 48, 64, 128, 256};  // px, as desktops ask for them
constexpr char kFontFamily[] = "DejaVu Sans Condensed";

// Outlines are taken at the font's own units and scaled down, so that no hinting for some screen size gets into them.
constexpr int kOutlineSize = 2048;

// The condensed face is still too wide for the longest words. All words are narrowed alike, so that they remain one
// lettering from button to button.
constexpr double kNarrowing = 0.82;

constexpr double kBorder = 1;
constexpr double kRaisedLowerEdge = 2;
constexpr double kPressedShift = 1;
constexpr double kSideMargin = 7;
constexpr double kWordsLeft = 12;
constexpr double kChevronFromRight = 14;
constexpr double kChevronReach = 4;
constexpr double kChevronStroke = 1.8;
constexpr double kChevronGap = 6;

constexpr char kIcon[] =
    R"(<svg xmlns="http://www.w3.org/2000/svg" width="256" height="256" viewBox="0 0 256 256">)"
    R"(<rect x="8" y="8" width="240" height="240" rx="44" fill="#AC2424"/>)"
    R"(<path fill="none" stroke="#FFF" stroke-width="34" stroke-linecap="round" stroke-linejoin="round" )"
    R"(d="M56 84h56l32 88h56"/>)"
    R"(<circle cx="60" cy="172" r="24" fill="#FFF"/><circle cx="196" cy="84" r="24" fill="#FFF"/></svg>)"
    "\n";

struct Colours {
  const char* border;
  const char* face;
  const char* words;
};

Colours ColoursOf(PictureFace face, bool pressed) {
  if (face == PictureFace::Primary) {
    return pressed ? Colours{"#1E211D", "#841A1A", "#FFFFFF"} : Colours{"#6E1515", "#AC2424", "#FFFFFF"};
  }
  return pressed ? Colours{"#1E211D", "#E3E6E0", "#1E211D"} : Colours{"#868D83", "#FFFFFF", "#1E211D"};
}

bool HasChevron(PictureFace face) {
  return face == PictureFace::LeadsOn || face == PictureFace::Product || face == PictureFace::Model;
}

double FontSizeOf(const PictureButtonRow& row) {
  switch (row.face) {
    case PictureFace::Product: return 15;
    case PictureFace::Model: return 13;
    case PictureFace::LeadsOn: return 12.5;
    case PictureFace::Plain:
    case PictureFace::Primary: break;
  }
  return row.height < 30 ? 11.5 : 13;
}

// A missing family or weight is replaced without a word, and the pictures would come out in some other lettering.
void DemandFont() {
  if (QFontDatabase::styles(QString::fromLatin1(kFontFamily)).contains(QStringLiteral("Bold"))) return;
  throw std::runtime_error(std::string("the font \"") + kFontFamily +
                           " Bold\" is not installed; the words of the pictures are drawn with it");
}

QFont WordFont() {
  DemandFont();
  QFont font(QString::fromLatin1(kFontFamily));
  font.setBold(true);
  font.setPixelSize(kOutlineSize);
  font.setHintingPreference(QFont::PreferNoHinting);
  return font;
}

QByteArray Number(double value) {
  QByteArray text = QByteArray::number(value, 'f', 2);
  while (text.endsWith('0')) text.chop(1);
  if (text.endsWith('.')) text.chop(1);
  return text == "-0" ? QByteArray("0") : text;
}

QByteArray Point(const QPointF& point) { return Number(point.x()) + ' ' + Number(point.y()); }

// Every outline of a letter is a closed loop. A straight last side is left out, since the Z draws it.
QByteArray PathData(const QPainterPath& path) {
  QByteArray data;
  QPointF start;
  for (int i = 0; i < path.elementCount(); ++i) {
    const QPainterPath::Element element = path.elementAt(i);
    const QPointF point = element;
    switch (element.type) {
      case QPainterPath::MoveToElement:
        if (!data.isEmpty()) data += 'Z';
        data += 'M' + Point(point);
        start = point;
        break;
      case QPainterPath::LineToElement:
        if (point != start) data += 'L' + Point(point);
        break;
      case QPainterPath::CurveToElement: data += 'C' + Point(point); break;
      case QPainterPath::CurveToDataElement: data += ' ' + Point(point); break;
    }
  }
  return data + 'Z';
}

double FaceCentre(const PictureButtonRow& row) { return (kBorder + row.height - kRaisedLowerEdge) / 2; }

// The words at their place in the raised picture. Both ways it is the capital H that is set on its mark, and not the
// letters at hand: descenders and round letters leave the line where it is, and in a column of buttons the stems stand
// below each other while slanted letters reach out as far as the lettering wants it.
QPainterPath Words(const PictureButtonRow& row, const QFont& font) {
  QPainterPath capital;
  capital.addText(0, 0, font, QStringLiteral("H"));
  const QRectF capitalInk = capital.boundingRect();
  QPainterPath outline;
  outline.addText(0, 0, font, QString::fromUtf8(row.words.data(), static_cast<qsizetype>(row.words.size())));
  const QRectF ink = outline.boundingRect();

  const double scaleY = FontSizeOf(row) / kOutlineSize;
  const double scaleX = scaleY * kNarrowing;
  const bool leadsOn = HasChevron(row.face);
  const double originX =
      leadsOn ? kWordsLeft - capitalInk.left() * scaleX : row.width / 2.0 - ink.center().x() * scaleX;
  const double baseline = FaceCentre(row) + capitalInk.height() * scaleY / 2;
  const QPainterPath words = QTransform(scaleX, 0, 0, scaleY, originX, baseline).map(outline);

  const QRectF place = words.boundingRect();
  const double limit = row.width - (leadsOn ? kChevronFromRight + kChevronStroke / 2 + kChevronGap : kSideMargin);
  if (place.left() < kSideMargin || place.right() > limit) {
    throw std::runtime_error("\"" + std::string(row.words) + "\" does not fit its picture");
  }
  return words;
}

QByteArray Rectangle(double inset, double lowerInset, const PictureButtonRow& row, double radius, const char* fill) {
  QByteArray place;
  if (inset != 0) place = " x=\"" + Number(inset) + "\" y=\"" + Number(inset) + '"';
  return "<rect" + place + " width=\"" + Number(row.width - 2 * inset) + "\" height=\"" +
         Number(row.height - inset - lowerInset) + "\" rx=\"" + Number(radius) + "\" fill=\"" + fill + "\"/>";
}

QByteArray Picture(const PictureButtonRow& row, bool pressed, const QFont& font) {
  const Colours colours = ColoursOf(row.face, pressed);
  const double shift = pressed ? kPressedShift : 0;
  const QByteArray size = Number(row.width) + ' ' + Number(row.height);

  QByteArray svg = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + Number(row.width) + "\" height=\"" +
                   Number(row.height) + "\" viewBox=\"0 0 " + size + "\">";
  svg += Rectangle(0, 0, row, 4, colours.border);
  svg += Rectangle(kBorder, pressed ? kBorder : kRaisedLowerEdge, row, 3, colours.face);
  svg += QByteArray("<path fill=\"") + colours.words + "\" d=\"" + PathData(Words(row, font).translated(0, shift)) +
         "\"/>";
  if (HasChevron(row.face)) {
    const QByteArray reach = Number(kChevronReach);
    const QPointF start(row.width - kChevronFromRight, FaceCentre(row) + shift - kChevronReach);
    svg += QByteArray("<path fill=\"none\" stroke=\"") + colours.border + "\" stroke-width=\"" +
           Number(kChevronStroke) + "\" stroke-linecap=\"round\" stroke-linejoin=\"round\" d=\"M" + Point(start) + 'l' +
           reach + ' ' + reach + "-" + reach + ' ' + reach + "\"/>";
  }
  return svg + "</svg>\n";
}

void Write(const QDir& folder, const QString& name, const QByteArray& content) {
  QFile file(folder.filePath(name));
  if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.flush()) {
    throw std::runtime_error(file.fileName().toStdString() + ": " + file.errorString().toStdString());
  }
}

/// As VK32 draws it.
QImage Drawn(const QByteArray& svg, QSize size) {
  QImage image(size, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  if (!vk32::DrawSvg(painter, svg, image.rect())) throw std::runtime_error("VK32 can't draw " + svg.toStdString());
  return image;
}

QByteArray Png(const QImage& image) {
  QBuffer file;
  file.open(QIODevice::WriteOnly);
  if (!image.save(&file, "PNG")) throw std::runtime_error("a picture can't be made a PNG file");
  return file.data();
}

/// The icon of programs on Windows: a head, a row of 16 bytes for each size, and their PNG files.
QByteArray IconFile(const std::vector<QByteArray>& pngs) {
  QByteArray file;
  QDataStream out(&file, QIODevice::WriteOnly);
  out.setByteOrder(QDataStream::LittleEndian);
  out << quint16{0} << quint16{1} << static_cast<quint16>(pngs.size());
  auto place = static_cast<quint32>(6 + 16 * pngs.size());
  for (std::size_t i = 0; i < pngs.size(); ++i) {
    const auto side = static_cast<quint8>(kIconSizes[i]);  // 256 is written as 0
    const auto length = static_cast<quint32>(pngs[i].size());
    out << side << side << quint8{0} << quint8{0} << quint16{1} << quint16{32} << length << place;
    place += length;
  }
  for (const QByteArray& png : pngs) out.writeRawData(png.constData(), static_cast<int>(png.size()));
  return file;
}

void WriteAll(const QString& folderName) {
  const QDir folder(folderName);
  const QFont font = WordFont();
  for (const PictureButtonRow& row : vk32::PictureTable()) {
    for (const bool pressed : {false, true}) {
      const QByteArray svg = Picture(row, pressed, font);
      Drawn(svg, QSize(row.width, row.height));
      Write(folder, QString::number(pressed ? row.pressed : row.raised) + QStringLiteral(".svg"), svg);
    }
  }
  Write(folder, QStringLiteral("icon.svg"), kIcon);
  std::vector<QByteArray> pngs;
  for (const int size : kIconSizes) {
    pngs.push_back(Png(Drawn(kIcon, QSize(size, size))));
    Write(folder, QStringLiteral("icon-%1.png").arg(size), pngs.back());
  }
  Write(folder, QStringLiteral("icon.ico"), IconFile(pngs));
}

}  // namespace

int main(int argc, char** argv) {
  // Fonts need a GUI application, but nothing is shown: a screen is not asked for.
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  QCoreApplication::setApplicationName("vk32-pictures");
  QCommandLineParser parser;
  parser.setApplicationDescription("Writes the pictures of all buttons into a folder, which has to be there.");
  const QCommandLineOption help = parser.addHelpOption();
  parser.addPositionalArgument("FOLDER", "Where the pictures go.");
  const bool parsed = parser.parse(QCoreApplication::arguments());
  if (parsed && parser.isSet(help)) parser.showHelp();
  const QStringList folders = parser.positionalArguments();
  if (!parsed || folders.size() != 1 || !QDir(folders.front()).exists()) {
    const QString error = parsed ? "wants one FOLDER, which has to be there" : parser.errorText();
    std::fprintf(stderr, "vk32-pictures: %s\n", qPrintable(error));
    return 2;
  }
  try {
    WriteAll(folders.front());
  } catch (const std::exception& problem) {
    std::fprintf(stderr, "vk32-pictures: %s\n", problem.what());
    return 1;
  }
  return 0;
}
