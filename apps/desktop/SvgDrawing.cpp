// Draws the pictures of the program: SVG of the few shapes that they consist of.
#include "SvgDrawing.h"

#include <QPainterPath>
#include <QString>
#include <QXmlStreamReader>
#include <charconv>
#include <optional>

namespace vk32 {
namespace {

/// The data of a path: letters and numbers. A number ends also where a minus begins the next one.
class PathReader {
 public:
  explicit PathReader(QStringView data) : data_(data.toLatin1()) {}

  /// Nothing if there is a letter that none of the pictures has, or a number is missing.
  std::optional<QPainterPath> Read() {
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    char letter = 0;
    while (SkipBlanks()) {
      if (const char next = data_[at_]; next != '-' && (next < '0' || next > '9')) letter = data_[at_++];
      Add(path, letter);
      if (!good_) return std::nullopt;
    }
    return path;
  }

 private:
  void Add(QPainterPath& path, char letter) {
    switch (letter) {
      case 'M': path.moveTo(Point()); break;
      case 'L': path.lineTo(Point()); break;
      case 'l': path.lineTo(path.currentPosition() + Point()); break;
      case 'h': path.lineTo(path.currentPosition() + QPointF(Number(), 0)); break;
      case 'C': {
        const QPointF first = Point(), second = Point();
        path.cubicTo(first, second, Point());
        break;
      }
      case 'Z': path.closeSubpath(); break;
      default: good_ = false;
    }
  }
  QPointF Point() {
    const double x = Number();
    return {x, Number()};
  }
  double Number() {
    SkipBlanks();
    double number = 0;
    const char* const begin = data_.data() + at_;
    const auto [end, fault] = std::from_chars(begin, data_.data() + data_.size(), number, std::chars_format::fixed);
    good_ = good_ && fault == std::errc{};
    at_ += end - begin;
    return number;
  }
  /// False at the end.
  bool SkipBlanks() {
    while (at_ < data_.size() && (data_[at_] == ' ' || data_[at_] == '\n')) ++at_;
    return at_ < data_.size();
  }

  const QByteArray data_;
  qsizetype at_ = 0;
  bool good_ = true;
};

/// The attributes of one element.
class Attributes {
 public:
  explicit Attributes(const QXmlStreamReader& reader) : all_(reader.attributes()) {}

  QStringView Text(QLatin1String name) const { return all_.value(name); }
  /// 0 if it is not given.
  double Number(QLatin1String name) const { return Text(name).toDouble(); }

 private:
  QXmlStreamAttributes all_;
};

QBrush Fill(const Attributes& given) {
  const QStringView color = given.Text(QLatin1String("fill"));
  return color == QLatin1String("none") ? QBrush(Qt::NoBrush) : QBrush(QColor(color.toString()));
}

/// All lines of the pictures have round ends.
QPen Stroke(const Attributes& given) {
  const QStringView color = given.Text(QLatin1String("stroke"));
  if (color.isEmpty()) return Qt::NoPen;
  return QPen(QColor(color.toString()), given.Number(QLatin1String("stroke-width")), Qt::SolidLine, Qt::RoundCap,
              Qt::RoundJoin);
}

/// In whole percent of half a side, as the corners of the pictures have always looked.
int Roundness(double radius, double side) { return side > 0 ? static_cast<int>(radius * (100 / (side / 2))) : 0; }

bool DrawShape(QPainter& painter, QStringView shape, const Attributes& given) {
  painter.setPen(Stroke(given));
  painter.setBrush(Fill(given));
  const auto number = [&](const char* name) { return given.Number(QLatin1String(name)); };
  if (shape == QLatin1String("rect")) {
    const QRectF area(number("x"), number("y"), number("width"), number("height"));
    const double radius = number("rx");
    painter.drawRoundedRect(area, Roundness(radius, area.width()), Roundness(radius, area.height()), Qt::RelativeSize);
    return true;
  }
  if (shape == QLatin1String("circle")) {
    painter.drawEllipse(QPointF(number("cx"), number("cy")), number("r"), number("r"));
    return true;
  }
  if (shape != QLatin1String("path")) return false;
  const auto path = PathReader(given.Text(QLatin1String("d"))).Read();
  if (path) painter.drawPath(*path);
  return path.has_value();
}

/// From the units of a picture to its place. Nothing if the viewBox is not four numbers.
std::optional<QTransform> ToPlace(QStringView viewBox, const QRectF& place) {
  const auto sides = viewBox.split(u' ');
  if (sides.size() != 4 || sides[2].toDouble() <= 0 || sides[3].toDouble() <= 0) return std::nullopt;
  return QTransform::fromTranslate(place.left(), place.top())
      .scale(place.width() / sides[2].toDouble(), place.height() / sides[3].toDouble())
      .translate(-sides[0].toDouble(), -sides[1].toDouble());
}

}  // namespace

bool DrawSvg(QPainter& painter, const QByteArray& svg, const QRectF& place) {
  QXmlStreamReader reader(svg);
  if (!reader.readNextStartElement() || reader.name() != QLatin1String("svg")) return false;
  const auto transform = ToPlace(Attributes(reader).Text(QLatin1String("viewBox")), place);
  if (!transform) return false;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setTransform(*transform, true);
  bool good = true;
  while (good && reader.readNextStartElement()) {
    good = DrawShape(painter, reader.name(), Attributes(reader));
    reader.skipCurrentElement();
  }
  painter.restore();
  return good && !reader.hasError();
}

}  // namespace vk32
