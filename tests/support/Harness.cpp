// The whole program in virtual time.
#include "support/Harness.h"

#include <filesystem>
#include <fstream>
#include <sstream>

#include "core/Convert.h"
#include "platform/Paths.h"
#include "script/Quoting.h"

namespace vk32 {

Harness::Harness()
    : screen([this](const std::string& line) {
        if (line.starts_with("detail ")) {
          details += Unquote(line.substr(8, line.size() - 9)).value_or(line) + "\n";
        } else if (line != "ok") {
          printed_ += line + "\n";
        }
      }),
      driver(loop),
      names("", "/nowhere", "/nowhere"),
      app(loop, screen, driver, names),
      session(app, screen) {
  StartProgram(app);
}

std::string Harness::Do(std::string_view commands) {
  printed_.clear();
  std::istringstream lines{std::string(commands)};
  for (std::string line; std::getline(lines, line);) {
    const std::size_t first = line.find_first_not_of(' ');
    if (first != std::string::npos) session.RunLine(std::string_view(line).substr(first));
  }
  return printed_;
}

std::string Harness::Get(const std::string& path) {
  const std::string line = Do("get " + path);
  EXPECT_EQ(line.substr(0, 6), "value ") << line;
  return line.size() < 8 ? line : Unquote(line.substr(6, line.size() - 7)).value_or(line);
}

void Harness::GoTo(const std::string& productButton, FakeDevice* device) {
  Do("click Splash");
  Do("click MainMenu." + productButton);
  if (!device) return;
  driver.Plug("COM3", device);
  EXPECT_EQ(Do("select ProductMenu.COMCbo COM3"), "");
  driver.calls.clear();
}

TemporaryFile::TemporaryFile(const std::string& name, std::string_view content) {
  path_ = MakeTemporaryFolder("vk32-test") + "/" + name;
  if (!content.empty()) Fill(content);
}

TemporaryFile::~TemporaryFile() {
  std::error_code ignored;
  std::filesystem::remove_all(PathOf(path_).parent_path(), ignored);
}

std::string TemporaryFile::Content() const {
  std::ifstream file(PathOf(path_), std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

void TemporaryFile::Fill(std::string_view content) const { std::ofstream(PathOf(path_), std::ios::binary) << content; }

Bytes FromHex(std::string_view digits) {
  std::string text(digits);
  std::erase(text, ' ');
  Bytes bytes;
  for (std::size_t at = 0; at < text.size(); at += 2) bytes += Chr(std::stoi(text.substr(at, 2), nullptr, 16));
  return bytes;
}

std::vector<std::string> Split(const std::string& text, char separator) {
  std::vector<std::string> parts;
  std::istringstream stream(text);
  for (std::string part; std::getline(stream, part, separator);) parts.push_back(part);
  return parts;
}

std::string Lines(std::string text) {
  for (std::size_t at = 0; (at = text.find('\n', at)) != std::string::npos; at += 2) text.insert(at, 1, '\r');
  return text;
}

std::string ToHex(std::string_view bytes) { return HexText(Bytes(bytes)); }

}  // namespace vk32
