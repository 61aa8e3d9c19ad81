// The command line of vk32-cli.
#include "cli/CommandLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <functional>

#include "app/App.h"
#include "cli/Batch.h"
#include "cli/Commands.h"
#include "cli/Configuration.h"
#include "cli/Edit.h"
#include "cli/FileContent.h"

namespace vk32 {
namespace {

constexpr const char* Statuses =
    "Exit status: 0 done; 1 different, or not verified; 2 wrong usage; 3 no answer of the device, or a wrong one; 4 "
    "the "
    "port can't be opened; 5 a file is refused; 6 a value does not fit; 7 stopped by the user.";

/// The subcommands, and what they take.
class Parser {
 public:
  explicit Parser(World& world) : world_(world) {
    parser_.allow_windows_style_options(false);
    parser_.require_subcommand(1);
    parser_.footer(Statuses);
    parser_.set_version_flag("--version", "vk32-cli " + ProgramVersion());
    AddDeviceCommands();
    AddFileCommands();
  }

  ExitStatus Run(std::vector<std::string> arguments) {
    const std::string command = arguments.empty() ? "" : arguments.front();
    const auto known = [&](const CLI::App* one) { return one->get_name() == command; };
    if (!command.empty() && command[0] != '-' && parser_.get_subcommands(known).empty()) {
      world_.console.err << "There is no command " << command << ": vk32-cli --help lists them.\n";
      return ExitStatus::WrongUsage;
    }
    for (std::string& argument : arguments) {
      // The parser takes "[a,b]" for two words; as a file it is the same with its folder.
      if (argument.starts_with('[') && argument.ends_with(']')) argument.insert(0, "./");
    }
    std::ranges::reverse(arguments);  // as the parser wants them
    try {
      parser_.parse(arguments);
    } catch (const CLI::ParseError& error) {
      return parser_.exit(error, world_.console.out, world_.console.err) == 0 ? ExitStatus::Done
                                                                              : ExitStatus::WrongUsage;
    }
    job_();
    return ExitStatus::Done;
  }

 private:
  CLI::App& Add(const char* name, const char* help, std::function<void()> job) {
    CLI::App& command = *parser_.add_subcommand(name, help);
    command.callback([this, job = std::move(job)] { job_ = job; });
    return command;
  }
  void Port(CLI::App& command) {
    command.add_option("--port", port_, "COM1 to COM32, or a device's path")->required()->type_name("P");
    Yes(command);
  }
  void Yes(CLI::App& command) { command.add_flag("-y,--yes", world_.console.yes, "ask nothing: the device is ready"); }
  void Product(CLI::App& command) {
    command.add_option("PRODUCT", product_, "RB2000, RB3000, RBCard, VK5300 or VK-RTX")->required();
    command.add_option("--model", model_, "of the VK-RTX: DF1 or Modbus");
  }
  void Output(CLI::App& command) {
    command.add_option("-o,--output", output_, "the file; without it, the standard output")->type_name("FILE");
  }
  void Json(CLI::App& command) { command.add_flag("--json", json_, "as one JSON document"); }

  void AddDeviceCommands() {
    Json(Add("ports", "What is plugged in: name, device, description, free or held by whom",
             [this] { ListPorts(world_, json_); }));

    CLI::App& read = Add("read", "Read a gateway's configuration into a file", [this] {
      ReadConfiguration(world_, {product_, model_, port_, output_});
    });
    Product(read);
    Port(read);
    Output(read);

    CLI::App& write = Add("write", "Write a configuration file to a gateway", [this] {
      WriteConfiguration(world_, {file_, port_, file_, backup_, verify_});
    });
    write.add_option("FILE", file_, "the file; it says which product and model it is for")->required();
    Port(write);
    write.add_flag("--verify", verify_, "read the gateway afterwards, and compare");
    write.add_option("--backup", backup_, "first read what the gateway has into a file in this folder")
        ->type_name("DIR");

    CLI::App& info =
        Add("info", "What a gateway says of itself", [this] { ShowDeviceInfo(world_, product_, port_, json_); });
    info.add_option("PRODUCT", product_, "VK5300: no other one tells what it is")->required();
    Port(info);
    Json(info);

    CLI::App& firmware =
        Add("firmware", "Install a firmware file in a VK-RTX", [this] { InstallFirmware(world_, file_, port_); });
    firmware.add_option("FILE", file_, "the firmware")->required();
    Port(firmware);
  }

  void AddFileCommands() {
    CLI::App& show =
        Add("show", "List a configuration, field by field: of a file, or of a product with --port", [this] { Show(); });
    show.add_option("SOURCE", file_, "a file, or a product")->required();
    show.add_option("--port", port_, "COM1 to COM32, or a device's path")->type_name("P");
    show.add_option("--model", model_, "of the VK-RTX: DF1 or Modbus");
    Yes(show);
    Json(show);
    show.add_flag("--html", html_, "as a report to be printed")->excludes("--json");
    Output(show);

    CLI::App& diff = Add("diff", "Compare two configurations: files, or PRODUCT@PORT",
                         [this] { ShowDifferences(world_, file_, other_, json_); });
    diff.add_option("A", file_, "a file, or a product and its port: VK-RTX-Modbus@COM3")->required();
    diff.add_option("B", other_, "the other one")->required();
    Yes(diff);
    Json(diff);

    Add("check", "Look for values in files that their device can't hold", [this] { CheckFiles(world_, words_); })
        .add_option("FILE", words_, "the files")
        ->required();

    CLI::App& set = Add("set", "Change fields of a file", [this] { SetInFile(); });
    set.add_option("FILE", file_, "the file")->required();
    set.add_option("ASSIGNMENT", words_, "\"Page/Field=value\", by the names that show lists")->required();
    set.add_option("-o,--output", output_, "the file that takes the result")->required()->type_name("FILE");

    CLI::App& batch = Add("batch", "A configuration for each row of a table", [this] {
      RunBatch(world_, {file_, other_, output_, write_, port_, results_});
    });
    batch.add_option("TEMPLATE", file_, "the configuration that the rows change")->required();
    batch.add_option("TABLE", other_, "a CSV file; its columns are fields, and Name and Port")->required();
    batch.add_option("--out", output_, "a folder that takes a file for each row")->type_name("DIR");
    batch.add_flag("--write", write_, "write each row to its gateway, and verify it");
    batch.add_option("--port", port_, "of the rows that name none")->type_name("P");
    batch.add_option("--results", results_, "keeps what became of each row (TABLE.results.csv)")->type_name("FILE");
    Yes(batch);
  }

  void SetInFile() const {
    std::vector<Assignment> assignments;
    for (const std::string& word : words_) assignments.push_back(ParseAssignment(word));
    Program program(world_, TargetOfFile(file_));
    Store(output_, Edited(program, file_, assignments, TemporaryFolder()));
    world_.console.err << output_ << " has been written.\n";
  }

  void Show() const {
    const bool device = !port_.empty();
    if (!device) RefuseProduct(file_, "with --port P");
    const Configuration shown = device ? LoadDevice(world_, FindTarget(file_, model_), port_) : LoadFile(world_, file_);
    ShowConfiguration(world_, shown, html_ ? ShowAs::Html : json_ ? ShowAs::Json : ShowAs::Text, output_);
  }

  World& world_;
  CLI::App parser_{"VK32 on the command line: reads, writes and compares the configurations of Norvanta gateways.",
                   "vk32-cli"};
  std::function<void()> job_;
  std::string product_, model_, port_, file_, other_, output_, backup_, results_;
  std::vector<std::string> words_;
  bool json_ = false, html_ = false, verify_ = false, write_ = false;
};

}  // namespace

ExitStatus RunCommandLine(World& world, const std::vector<std::string>& arguments) {
  try {
    return Parser(world).Run(arguments);
  } catch (const Failure& failure) {
    world.console.err << failure.what() << "\n";
    return failure.status;
  }
}

}  // namespace vk32
