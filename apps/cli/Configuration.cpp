// A configuration as vk32-cli reads it, and the commands that only look at one.
#include "cli/Configuration.h"

#include <algorithm>
#include <ctime>
#include <map>
#include <optional>

#include "cli/FileContent.h"
#include "cli/Json.h"
#include "cli/Program.h"
#include "listing/SaveReport.h"
#include "models/wizard/WizardForm.h"
#include "platform/Paths.h"

namespace vk32 {
namespace {

Json HeadOf(const Configuration& configuration) {
  Json head{{"product", configuration.target.product}};
  if (!configuration.target.model.empty()) head["model"] = configuration.target.model;
  head["source"] = configuration.source;
  return head;
}

std::string AsJson(const Configuration& configuration) {
  Json document = HeadOf(configuration);
  Json& fields = document["fields"] = Json::array();
  for (const ListedValue& row : Shown(configuration.listing)) {
    Json field{{"page", ToUtf8(row.page)},
               {"group", ToUtf8(row.group)},
               {"field", ToUtf8(row.field)},
               {"value", ToUtf8(row.value)}};
    if (!row.unit.empty()) field["unit"] = ToUtf8(row.unit);
    fields.push_back(field);
  }
  return Printed(document);
}

std::string AsText(const Configuration& configuration) {
  const Target& target = configuration.target;
  return target.product + (target.model.empty() ? "" : ", " + target.model) + "\n" + TextReport(configuration.listing);
}

std::string AsHtml(World& world, const Configuration& configuration) {
  const Target& target = configuration.target;
  return HtmlReport(ReportHeadOf(target.product, target.model, configuration.source, world.loop),
                    configuration.listing);
}

Json JsonOf(const std::optional<std::string>& value) { return value ? Json(ToUtf8(*value)) : Json(nullptr); }

std::vector<Difference> DifferencesOf(const Configuration& left, const Configuration& right) {
  std::vector<Difference> kinds;
  if (left.target.product != right.target.product) {
    kinds.push_back({"Gateway", "", "Product", left.target.product, right.target.product});
  } else if (left.target.model != right.target.model) {
    kinds.push_back({"Gateway", "", "Model", left.target.model, right.target.model});
  }
  // Fields of two kinds have nothing to do with each other.
  return kinds.empty() ? Compare(Shown(left.listing), Shown(right.listing)) : kinds;
}

/// The row of the listing that a control holds; nullptr: none does.
const ListedValue* RowOf(const Listing& listing, const Control* control) {
  const auto row = std::ranges::find(listing, control, &ListedValue::control);
  return row == listing.end() ? nullptr : &*row;
}

std::string MisfitOf(const ListedValue& row, const PageHint& hint) {
  return Printable(row.Path()) + " is " + (row.value.empty() ? "empty" : "\"" + Printable(row.value) + "\"") + ". " +
         Printable(hint.PageHintLbl.Caption.Value());
}

/// What its device can't hold, each with its field. The program tells one at a time: each gives way to its factory
/// value, or to an address where that is none.
std::vector<std::string> MisfitsOf(World& world, const std::string& file) {
  Program program(world, TargetOfFile(file));
  program.OpenWizard();
  const WizardForm& wizard = program.Wizard();
  const Listing factory = program.Wizard().List();
  program.Open(file);
  std::vector<std::string> misfits;
  for (std::map<const Control*, int> refusals;;) {
    try {
      program.GoToApply();
      program.Check();
      return misfits;
    } catch (const Failure& failure) {
      if (failure.status != ExitStatus::DoesNotFit) throw;
      const Listing listing = program.Wizard().List();
      const ListedValue *row = RowOf(listing, wizard.pageHint.About()), *good = RowOf(factory, wizard.pageHint.About());
      if (!row || !good) {
        misfits.push_back(failure.what());
        return misfits;
      }
      const int refused = ++refusals[row->control];
      if (refused > 2) return misfits;
      if (refused == 1) misfits.push_back(MisfitOf(*row, wizard.pageHint));
      const std::string value = refused == 1 ? good->value : "0.0.0.0";
      program.Act([&] { SetValue(*row->control, value); }, ExitStatus::DoesNotFit);
    }
  }
}

}  // namespace

Configuration LoadFile(World& world, const std::string& path) {
  Program program(world, TargetOfFile(path));
  program.OpenWizard();
  program.Open(path);
  return {program.target, path, program.Wizard().List()};
}

Configuration LoadDevice(World& world, const Target& target, const std::string& port) {
  Program program(world, target);
  program.ChoosePort(port);
  program.OpenWizard();
  program.Upload();
  return {target, port, program.Wizard().List()};
}

Configuration Load(World& world, const std::string& what) {
  const std::size_t at = what.find('@');
  if (at == std::string::npos || IsThere(what)) {
    RefuseProduct(what, "with its port, as in " + what + "@COM3");
    return LoadFile(world, what);
  }
  return LoadDevice(world, FindTarget(what.substr(0, at)), what.substr(at + 1));
}

void ShowConfiguration(World& world, const Configuration& configuration, ShowAs as, const std::string& output) {
  const std::string shown = as == ShowAs::Html   ? AsHtml(world, configuration)
                            : as == ShowAs::Json ? AsJson(configuration)
                                                 : AsText(configuration);
  if (output.empty()) {
    world.console.out << shown;
    return;
  }
  Store(output, shown);
  world.console.err << "What " << configuration.source << " holds is listed in " << output << ".\n";
}

std::string DifferenceLines(const std::vector<Difference>& differences) {
  std::string lines;
  for (const Difference& difference : differences) {
    lines += Printable(difference.Words()) + "\n";
    if (difference.left) lines += "  - " + Printable(*difference.left) + "\n";
    if (difference.right) lines += "  + " + Printable(*difference.right) + "\n";
  }
  return lines;
}

void ShowDifferences(World& world, const std::string& left, const std::string& right, bool json) {
  const Configuration a = Load(world, left), b = Load(world, right);
  const std::vector<Difference> differences = DifferencesOf(a, b);
  if (json) {
    Json document{{"left", HeadOf(a)}, {"right", HeadOf(b)}, {"differences", Json::array()}};
    for (const Difference& row : differences) {
      document["differences"].push_back({{"page", ToUtf8(row.page)},
                                         {"group", ToUtf8(row.group)},
                                         {"field", ToUtf8(row.field)},
                                         {"left", JsonOf(row.left)},
                                         {"right", JsonOf(row.right)}});
    }
    world.console.out << Printed(document);
  } else {
    world.console.out << DifferenceLines(differences);
  }
  if (differences.empty()) {
    world.console.err << "No field differs.\n";
    return;
  }
  throw Failure(ExitStatus::Different,
                std::to_string(differences.size()) + (differences.size() == 1 ? " field differs." : " fields differ."));
}

void CheckFiles(World& world, const std::vector<std::string>& files) {
  std::optional<Failure> first;
  for (const std::string& file : files) {
    world.LookForStop();
    try {
      const std::vector<std::string> misfits = MisfitsOf(world, file);
      for (const std::string& misfit : misfits) world.console.out << file << ": " << misfit << "\n";
      if (misfits.empty()) world.console.out << file << ": good\n";
      if (!misfits.empty() && !first) first = Failure(ExitStatus::DoesNotFit, misfits[0]);
    } catch (const Failure& failure) {
      if (failure.status == ExitStatus::Stopped) throw;
      const std::string why = failure.what();
      if (!why.starts_with(file)) world.console.out << file << ": ";
      world.console.out << why << "\n";
      if (!first) first = failure;
    }
  }
  if (first) throw Failure(first->status, "Not all files are good.");
}

}  // namespace vk32
