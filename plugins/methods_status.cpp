// SPDX-License-Identifier: GPL-3.0-or-later
// Status window, messages, questions and requests: all through the Prompter.

#include <algorithm>
#include <cmath>

#include "core/workspace.h"
#include "pixel/rounding.h"
#include "plugins/file_filter.h"
#include "plugins/method_families.h"
#include "plugins/rpc_error.h"

namespace wib {

namespace {

constexpr const char* kFamily = "Status and messages";
constexpr MethodResult kNothing{ResultType::Nothing, "nothing"};
constexpr const char* kDefaultTitle = "Wibbleton";

Prompter& PrompterOf(CallContext& c) {
    return c.workspace().host.prompter;
}

std::string TitleArg(const CallArgs& args, std::size_t i) {
    return args.size() > i ? args.text(i) : kDefaultTitle;
}

// The value box's answer; `first` is where the prompt is among the arguments.
Reply ValueBox(CallContext& c, const CallArgs& args, std::size_t first) {
    const double minimum = args.number(first + 2);
    const double maximum = args.number(first + 3);
    if (minimum > maximum) {
        throw BadCall("the minimum must not be above the maximum");
    }
    return Reply::Number(
        PrompterOf(c).valueBox(args.text(first), args.number(first + 1), minimum, maximum));
}

using FileRequest = std::string (Prompter::*)(const std::string&, const std::string&);

MethodSpec FileRequestMethod(const char* name, const char* summary, FileRequest request) {
    return {
        name,
        kFamily,
        {{"title", ArgType::Text}, {"filter", ArgType::Text, true}},
        {ResultType::Text, "text: the chosen path, empty when cancelled"},
        summary,
        [request](CallContext& c, CallArgs& args) {
            const std::string filter = args.size() > 1 ? args.text(1) : "All files (*)";
            return Reply::Text((PrompterOf(c).*request)(args.text(0), DialogFileFilter(filter)));
        }};
}

}  // namespace

std::vector<MethodSpec> StatusMethods() {
    return {
        {"Wib_StatusOpen",
         kFamily,
         {{"caption", ArgType::Text, true}},
         kNothing,
         "Opens the status window with the caption; without one, with the caption last used "
         "(\"Processing...\" after Wib_StatusClose).",
         [](CallContext& c, CallArgs& args) {
             if (args.size() > 0) {
                 c.server.statusCaption = args.text(0);
             }
             PrompterOf(c).statusOpen(c.server.statusCaption);
             c.connection.statusOpen = true;
             return Reply::Nil();
         }},
        {"Wib_Status",
         kFamily,
         {{"text", ArgType::Text}},
         kNothing,
         "Replaces the status window's text line.",
         [](CallContext& c, CallArgs& args) {
             PrompterOf(c).status(args.text(0));
             return Reply::Nil();
         }},
        {"Wib_SetProgress",
         kFamily,
         {{"percent", ArgType::Single}},
         kNothing,
         "Moves the progress bar: the value is taken in single precision, rounded to a whole "
         "number (halves to even) and held to 0..100.",
         [](CallContext& c, CallArgs& args) {
             const double rounded = RoundHalfEvenValue(static_cast<float>(args.number(0)));
             PrompterOf(c).progress(static_cast<int>(std::clamp(rounded, 0.0, 100.0)));
             return Reply::Nil();
         }},
        {"Wib_StatusClose",
         kFamily,
         {},
         kNothing,
         "Closes the status window and resets its caption to \"Processing...\" for the next "
         "user.",
         [](CallContext& c, CallArgs&) {
             PrompterOf(c).statusClose();
             c.server.statusCaption = kDefaultStatusCaption;
             c.connection.statusOpen = false;
             return Reply::Nil();
         }},
        {"Wib_PrintError",
         kFamily,
         {{"text", ArgType::Text}},
         kNothing,
         "Writes the text as one line of the program's message log.",
         [](CallContext& c, CallArgs& args) {
             c.workspace().host.log.line(args.text(0));
             return Reply::Nil();
         }},
        {"Wib_MessageBox",
         kFamily,
         {{"text", ArgType::Text}, {"title", ArgType::Text, true}},
         {ResultType::Integer, "integer: 1 (the OK button)"},
         "Shows a message box; the title defaults to \"Wibbleton\".",
         [](CallContext& c, CallArgs& args) {
             PrompterOf(c).messageBox(args.text(0), TitleArg(args, 1));
             return Reply::Integer(1);
         }},
        {"Wib_QuestionBox",
         kFamily,
         {{"text", ArgType::Text}, {"title", ArgType::Text, true}},
         {ResultType::Integer, "integer: 1 for the first button (Yes), 2 for the second (No)"},
         "Asks with the program's own two-button question box; the title defaults to "
         "\"Wibbleton\".",
         [](CallContext& c, CallArgs& args) {
             return Reply::Integer(PrompterOf(c).questionBox(args.text(0), TitleArg(args, 1)));
         }},
        {"Wib_ValueBox",
         kFamily,
         {{"prompt", ArgType::Text},
          {"default", ArgType::Number},
          {"min", ArgType::Number},
          {"max", ArgType::Number}},
         {ResultType::Number, "number: the value entered, the default when cancelled"},
         "Asks for a number between min and max.",
         [](CallContext& c, CallArgs& args) { return ValueBox(c, args, 0); }},
        {"Wib_ValueBox2",
         kFamily,
         {{"title", ArgType::Text},
          {"prompt", ArgType::Text},
          {"default", ArgType::Number},
          {"min", ArgType::Number},
          {"max", ArgType::Number}},
         {ResultType::Number, "number: the value entered, the default when cancelled"},
         "Wib_ValueBox with a title first. The program's value box has a fixed title, so the "
         "title is accepted and not shown.",
         [](CallContext& c, CallArgs& args) { return ValueBox(c, args, 1); }},
        FileRequestMethod("Wib_RequestFile_Open",
                          "Asks for a file to open. The filter may be in the dialogs' form "
                          "(\"Targa (*.tga);;All files (*)\") or the classic one "
                          "(\"Targa|*.tga|All files|*.*\").",
                          &Prompter::requestFileOpen),
        FileRequestMethod("Wib_RequestFile_Save",
                          "Asks for a file name to save under; the filter as for "
                          "Wib_RequestFile_Open.",
                          &Prompter::requestFileSave),
        {"Wib_DirectoryBrowse",
         kFamily,
         {{"title", ArgType::Text}},
         {ResultType::Text, "text: the chosen folder, empty when cancelled"},
         "Asks for a folder.",
         [](CallContext& c, CallArgs& args) {
             return Reply::Text(PrompterOf(c).directoryBrowse(args.text(0)));
         }},
    };
}

}  // namespace wib
