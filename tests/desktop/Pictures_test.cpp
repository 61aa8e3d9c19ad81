// Windows are drawn and laid against kept pictures; with VK32_KEEP_PICTURES=1 they are kept as they are drawn now.
#include <cstdlib>
#include <map>

#include "DesktopTest.h"
#include "SvgDrawing.h"
#include "shell/Products.h"

namespace vk32 {
namespace {

using PicturesTest = EveryTest;

/// Cells of so many pixels, and the cells of a tile. A letter that another version of the font draws otherwise changes
/// the mean of a cell by less than a line that lacks, and a few cells of a tile more than that.
constexpr int Cell = 4, Pixels = Cell * Cell, Tile = 12 * Cell, ToleratedLevels = 3, ToleratedPercent = 18,
              ToleratedCells = 4;

bool Differs(const QImage& drawn, const QImage& kept, QPoint cell) {
  int difference = 0, lightest = 0, darkest = 255;
  for (int i = 0; i < Pixels; ++i) {
    const QPoint pixel = cell + QPoint(i % Cell, i / Cell);
    const int now = qGray(drawn.pixel(pixel)), then = qGray(kept.pixel(pixel));
    difference += now - then;
    lightest = std::max({lightest, now, then});
    darkest = std::min({darkest, now, then});
  }
  return std::abs(difference) > Pixels * (ToleratedLevels + ToleratedPercent * (lightest - darkest) / 100);
}

void ExpectKept(const QString& name, QWidget& window) {
  const QImage drawn = window.grab().toImage().convertToFormat(QImage::Format_RGB32);
  const QString path = QStringLiteral(VK32_KEPT_PICTURES "/") + name + ".png";
  if (std::getenv("VK32_KEEP_PICTURES")) drawn.save(path);
  const QImage kept(path);
  ASSERT_EQ(drawn.size(), kept.size()) << path.toStdString();
  std::map<std::pair<int, int>, int> tiles;
  for (int y = 0; y + Cell <= drawn.height(); y += Cell) {
    for (int x = 0; x + Cell <= drawn.width(); x += Cell) tiles[{x / Tile, y / Tile}] += Differs(drawn, kept, {x, y});
  }
  for (const auto& [tile, cells] : tiles) {
    EXPECT_LE(cells, ToleratedCells) << path.toStdString() << " around " << tile.first * Tile << ", "
                                     << tile.second * Tile << "; drawn: " << drawn.save("/tmp/vk32-" + name + ".png");
  }
}

TEST_F(PicturesTest, APictureWithMoreThanIsDrawnEndsThere) {
  for (const auto& [svg, drawn] :
       std::map<QByteArray, bool>{{R"(<svg viewBox="0 0 9 9"><path d="M1 1h5Z"/></svg>)", true},
                                  {R"(<svg viewBox="0 0 9 9"><path d="M1 1h"/></svg>)", false},
                                  {R"(<svg viewBox="0 0 9 9"><path d="M1 1Q5"/></svg>)", false},
                                  {R"(<svg viewBox="0 0 9 9"><path d="7-"/></svg>)", false},
                                  {R"(<svg viewBox="0 0 9 9"><text/></svg>)", false},
                                  {R"(<svg viewBox="0 0 9 9"><rect)", false},
                                  {R"(<svg viewBox="0 0 9"/>)", false}}) {
    QImage image(9, 9, QImage::Format_RGB32);
    QPainter painter(&image);
    EXPECT_EQ(DrawSvg(painter, svg, image.rect()), drawn) << svg.toStdString();
  }
}

TEST_F(PicturesTest, WindowsLookAsKept) {
  WindowOf(form).activateWindow();
  WidgetOf(form.FlagChk).setFocus();
  form.NextCmd.Press();
  ExpectKept("Every", WindowOf(form));
  form.NextCmd.Click();
  form.Term.Text = "One\r\ntwo ";
  Settle();
  ExpectKept("Terminal", WindowOf(form));
  for (const auto icon : {MessageIcon::Critical, MessageIcon::Question, MessageIcon::Exclamation}) {
    const BoxWatcher boxes([&](MessageBox& box) {
      ExpectKept("Box" + QString::number(static_cast<int>(icon)), box);
      Press(box, Qt::Key_Escape);
    });
    screen.Ask({"A text\r\nof two lines", icon, "VK32", MessageButtons::YesNo});
  }
  StartProgram(app);
  SelectProduct(app.globals, "RB2000");
  app.globals.ComPortText = "COM3";
  for (const char* name : {"Splash", "MainMenu", "ProductMenu", "OfflineMngr", "Configuration_RB2000"}) {
    ExpectKept(name, WindowOf(Show(name)));
  }
  Form& wizard = *app.forms.Find("Configuration_RB2000");
  for (int page = 0; page < 3; ++page) Click(*wizard.Find("NextCmd"));
  ExpectKept("Mapping", WindowOf(wizard));
}

}  // namespace
}  // namespace vk32
