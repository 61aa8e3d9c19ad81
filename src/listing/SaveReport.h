// A report on its way to the place that the user chooses.
#pragma once

#include <string>

#include "app/App.h"
#include "forms/Controls.h"
#include "listing/Report.h"

namespace vk32 {

/// At this time, by this program.
ReportHead ReportHeadOf(const std::string& product, const std::string& model, const std::string& source,
                        const EventLoop& loop);
/// Of what is configured now.
ReportHead ReportHeadOf(const App& app, const std::string& source);

/// Asks for a file, and writes the report into it: as it is, or as a PDF if the name ends so. Gives the file's name;
/// empty if none was written: the user has cancelled, or been told why.
std::string SaveReport(FileDialog& dialog, const std::string& html);

}  // namespace vk32
