// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/converter_bridge.h"

#include "core/atomic_file.h"
#include "core/host/process_runner.h"
#include "core/workspace.h"
#include "fileio/byte_source.h"
#include "fileio/conversion_wait.h"
#include "fileio/converter_command.h"
#include "fileio/file_messages.h"

namespace wib {

namespace {

bool Exists(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::exists(path, ignored);
}

}  // namespace

ConverterBridge::ConverterBridge(ProcessRunner& processes, std::filesystem::path tempFolder)
    : processes_(processes), tempFolder_(std::move(tempFolder)) {}

ConverterTargaRows ConverterBridge::rows(Workspace& workspace) {
    if (!rows_) {
        rows_ = ProbeConverterTargaRows(workspace, processes_,
                                        ConvertProgram(workspace.host.preferences), tempFolder_);
        if (!rows_) {
            // No answer: take the format at its word, and ask again next time.
            return {};
        }
        workspace.host.log.line(std::string("The converter ") +
                                (rows_->writesTopFirst || rows_->readsTopFirst
                                     ? "turns Targa files upside down; they are turned back."
                                     : "keeps to the Targa origin."));
    }
    return *rows_;
}

TargaRowOrder ConverterBridge::rowsOfConvertedTarga(Workspace& workspace,
                                                    const std::string& targa) {
    std::uint8_t descriptor = 0;
    FileSource source(targa);
    const auto header = source.next(kTargaHeaderSize);
    if (header.size() == kTargaHeaderSize) {
        descriptor = ParseTargaHeader(header.first<kTargaHeaderSize>()).descriptor;
    }
    const bool topFirst = (descriptor & kTargaTopOrigin) != 0 || rows(workspace).writesTopFirst;
    return topFirst ? TargaRowOrder::TopFirst : TargaRowOrder::BottomFirst;
}

TargaRowOrder ConverterBridge::rowsForConverter(Workspace& workspace) {
    return rows(workspace).readsTopFirst ? TargaRowOrder::TopFirst : TargaRowOrder::BottomFirst;
}

bool ConverterBridge::ConvertToTarga(Workspace& workspace, const std::string& source,
                                     const std::string& targa) {
    Prompter& prompter = workspace.host.prompter;
    std::error_code ignored;
    std::filesystem::remove(targa, ignored);
    const std::string commandLine =
        ToTargaCommandLine(ConvertProgram(workspace.host.preferences), source, targa);

    prompter.statusOpen(kStatusCaption);
    prompter.status(kConvertStarting);
    if (!processes_.start(commandLine)) {
        workspace.host.log.line("Could not start the converter: " + commandLine);
    }
    prompter.status(kConvertWaiting);
    if (!WaitForConversion(workspace, [&targa] { return Exists(targa); })) {
        prompter.statusClose();
        return false;
    }
    const auto found = workspace.host.clock.now();
    prompter.status(kConvertCompleted);
    prompter.status(kConvertSuccess);
    prompter.progress(100);
    SettleAfterConversion(workspace, found);
    prompter.status(kConvertProcessing);
    return true;
}

bool ConverterBridge::ConvertFromTarga(Workspace& workspace, const std::string& targa,
                                       const std::string& target, const std::string& formatWord,
                                       int quality) {
    Prompter& prompter = workspace.host.prompter;
    // The converter writes beside the target; only a whole file replaces it.
    const std::string output = TempPathBeside(target).string();
    const std::string commandLine =
        FromTargaCommandLine(ConvertProgram(workspace.host.preferences), targa, output, quality);

    prompter.statusOpen(kStatusCaption);
    prompter.status("Saving " + target);
    prompter.status("Format " + formatWord);
    const auto id = processes_.start(commandLine);
    if (!id) {
        workspace.host.log.line("Could not start the converter: " + commandLine);
    }
    const bool ended =
        WaitForConversion(workspace, [&] { return id.has_value() && !processes_.running(*id); });
    prompter.statusClose();
    std::error_code ignored;
    if (!ended) {
        std::filesystem::remove(output, ignored);
        return false;
    }
    const std::optional<ProcessEnd> end = processes_.ended(*id);
    const auto size = std::filesystem::file_size(output, ignored);
    if (!end || end->exitCode != 0 || ignored || size == 0) {
        std::filesystem::remove(output, ignored);
        std::string message = "The converter did not write " + target;
        if (end && !end->lastErrorLine.empty()) {
            message += "\n" + end->lastErrorLine;
        }
        prompter.message(message);
        return false;
    }
    std::string error;
    if (!MoveIntoPlace(output, target, error)) {
        prompter.message(CannotWriteMessage(target, error));
        return false;
    }
    return true;
}

}  // namespace wib
