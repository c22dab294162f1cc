#include "console/outputs.h"

#include <algorithm>
#include <utility>

#include "export/targetFile.h"
#include "platform/files.h"
#include "platform/folders.h"
#include "platform/locale.h"
#include "platform/paths.h"
#include "platform/runtimeError.h"

namespace {

// A device, a pipe or a stream, which is not replaced, so that it may serve several outputs.
bool isSpecial(const std::string& file) {
    return platform::isStream(file) || (platform::somethingExists(file) && !platform::fileExists(file) &&
                                        !platform::folderExists(platform::toInternal(file)));
}

bool leadToSameFile(const std::string& left, const std::string& right) {
    if (left == right && left == platform::standardOutput) {
        return true;
    }
    if (isSpecial(left) || isSpecial(right)) {
        return false;
    }
    return platform::isSameFile(left, right) ||
           platform::sameName(platform::resolveLinks(left), platform::resolveLinks(right));
}

// Begins to replace the file, and leaves it at that.
void requireWritable(const std::string& file) {
    if (!isSpecial(file)) {
        const platform::Replacement attempt(file);
    }
}

// Why the output cannot be written; empty if nothing is known to prevent it.
std::string whyNot(const Output& output, const std::vector<Output>& before,
                   const std::vector<OwnFile>& ownFiles) {
    try {
        for (const OwnFile& own : ownFiles) {
            if (leadToSameFile(output.file, own.path)) {
                return "this is " + std::string(own.what) + "; choose another file";
            }
        }
        for (const Output& other : before) {
            if (leadToSameFile(output.file, other.file)) {
                return "named for two outputs; choose another file for one of them";
            }
        }
        requireWritable(output.file);
        return {};
    } catch (const RuntimeError& error) {
        return error.what();
    }
}

} // namespace

std::vector<Output> outputsOf(const ConsoleOptions& options) {
    using modExport::ReportFormat;
    std::vector<Output> result{
        {options.htmlFile, ReportFormat::html},     {options.textFile, ReportFormat::text},
        {options.xmlFile, ReportFormat::xml},       {options.excelFile, ReportFormat::excel},
        {options.overviewFile, std::nullopt, true}, {options.databaseFile, std::nullopt}};
    std::erase_if(result, [](const Output& output) { return output.file.empty(); });
    return result;
}

std::vector<OwnFile> programsFiles(const std::string& applicationFolder,
                                   const modGlobal::ErrorLogFiles& log) {
    return {{applicationFolder + "settings.ini", "the file of settings"},
            {applicationFolder + "window.ini", "a file of the program"},
            {log.appended, "the error log"},
            {log.madeAnew, "the error log"}};
}

bool keepWritable(std::vector<Output>& outputs, const std::vector<OwnFile>& ownFiles,
                  ConsoleInterface& userInterface) {
    std::vector<Output> kept;
    for (Output& output : outputs) {
        userInterface.setSubject(output.file);
        const std::string reason = whyNot(output, kept, ownFiles);
        if (!reason.empty()) {
            userInterface.message(reason);
        } else if (modExport::confirmOverwrite(userInterface, output.file)) {
            output.agreed = platform::fileExists(output.file);
            kept.push_back(std::move(output));
        }
    }
    const bool all = kept.size() == outputs.size();
    outputs = std::move(kept);
    return all;
}
