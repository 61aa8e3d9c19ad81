// What the program's own work costs: frames, checksums, the parameter image, files, the start.
#include <benchmark/benchmark.h>

#include <filesystem>

#include "HeadlessProgram.h"
#include "link/BuildFrame.h"
#include "link/Frames.h"
#include "link/VKComSubs.h"
#include "models/serial/Configuration_RB2000.h"

namespace vk32::bench {
namespace {

void BuildImageFrame(benchmark::State& state) {
  Globals globals;
  globals.ConfigImage = Bytes(448, '\x2A');
  for (auto _ : state) benchmark::DoNotOptimize(BuildFrame(globals, "RB2000", ImageFrame::Code));
}
BENCHMARK(BuildImageFrame);

void BuildBlockFrame(benchmark::State& state) {
  Globals globals;
  globals.BlockData = Bytes(BlockFrame::ReadLength, '\x2A');
  globals.BlockLength = BlockFrame::ReadLength;
  for (auto _ : state) benchmark::DoNotOptimize(BuildFrame(globals, "VK-RTX", BlockFrame::Write));
}
BENCHMARK(BuildBlockFrame);

template <Bytes (*Checksum)(const Bytes&, int)>
void SumBytes(benchmark::State& state) {
  const int count = static_cast<int>(state.range(0));
  const Bytes bytes(static_cast<std::size_t>(count), '\x2A');
  for (auto _ : state) benchmark::DoNotOptimize(Checksum(bytes, count));
  state.SetBytesProcessed(state.iterations() * count);
}
BENCHMARK(SumBytes<&Checksum8>)->Name("Checksum8")->Arg(BlockFrame::ReplyLength);
BENCHMARK(SumBytes<&Checksum16>)->Name("Checksum16")->Arg(458);

/// The wizard with its defaults.
struct Wizard : HeadlessProgram {
  Wizard() {
    GoToProductMenu({"RB2000Cmd"});
    Do("click ProductMenu.ConfigureCmd");
  }

  Configuration_RB2000& form = dynamic_cast<Configuration_RB2000&>(app.forms.Load(Configuration_RB2000::FormName));
};

void EncodeImage(benchmark::State& state) {
  Wizard wizard;
  for (auto _ : state) {
    wizard.form.BuildParameterImage();
    benchmark::DoNotOptimize(wizard.app.globals.ConfigImage);
  }
}
BENCHMARK(EncodeImage);

void DecodeImage(benchmark::State& state) {
  Wizard wizard;
  for (auto _ : state) wizard.form.Parameter_Setup_RB();
}
BENCHMARK(DecodeImage)->Unit(benchmark::kMicrosecond);

/// A configuration file in a folder of its own, which goes with it.
struct ScratchFile {
  ScratchFile() { std::filesystem::create_directories(folder); }
  ~ScratchFile() { std::filesystem::remove_all(folder); }

  std::filesystem::path folder =
      std::filesystem::temp_directory_path() / ("vk32-bench-" + std::to_string(MonotonicNow().count()));
  std::string path = folder / "rb2000.cfg";
};

bool WriteTo(const std::string& path, Wizard& wizard) {
  RecordFile file = RecordFile::ForWriting(path);
  const bool written = wizard.form.SaveFile("RB2000", wizard.form.ModelTag(), file);
  file.Commit();
  return written;
}

void WriteFile(benchmark::State& state) {
  Wizard wizard;
  const ScratchFile scratch;
  for (auto _ : state) {
    if (!WriteTo(scratch.path, wizard)) return state.SkipWithError("not written");
  }
}
BENCHMARK(WriteFile)->Unit(benchmark::kMicrosecond);

void ReadFile(benchmark::State& state) {
  Wizard wizard;
  const ScratchFile scratch;
  WriteTo(scratch.path, wizard);
  for (auto _ : state) {
    std::string product, modelTag;
    RecordFile file = RecordFile::ForReading(scratch.path);
    if (!wizard.form.OpenFile(product, modelTag, file)) return state.SkipWithError("not read");
  }
}
BENCHMARK(ReadFile)->Unit(benchmark::kMicrosecond);

void StartToProductMenu(benchmark::State& state) {
  for (auto _ : state) {
    HeadlessProgram program;
    program.GoToProductMenu({"RB2000Cmd"});
  }
}
BENCHMARK(StartToProductMenu)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace vk32::bench

BENCHMARK_MAIN();
