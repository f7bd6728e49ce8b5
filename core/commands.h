// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <any>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "core/observer_list.h"
#include "core/param_value.h"

namespace wib {

class Workspace;

// FilePath is text the dialog fills from a file dialog; its `choices` hold
// that dialog's filter ("Images (*.tga *.bmp)"). An IntegerList holds one of
// `lengths` integers (any number when none are given), each in [minimum,
// maximum].
enum class ParamType { Integer, Number, Text, Colour, Boolean, Choice, FilePath, IntegerList };

struct ParamSpec {
    std::string name;     // key in Wib_RunCommand's map ("width")
    std::string caption;  // label in the dialog ("Width")
    ParamType type = ParamType::Integer;
    double minimum = 0;
    double maximum = 0;
    ParamValue fallback = 0LL;
    // Where the dialog's starting value comes from when it depends on the
    // document (the current width, say); `fallback` otherwise.
    std::function<ParamValue(const Workspace&)> current;
    std::vector<std::string> choices;  // captions of a Choice, in order
    std::vector<std::size_t> lengths;  // the counts an IntegerList may have; empty: any
    bool nonZero = false;              // an Integer that may not be 0 (a divisor)
};

// The values a command runs with, every parameter present and checked.
class ParamValues {
  public:
    explicit ParamValues(std::map<std::string, ParamValue> values) : values_(std::move(values)) {}
    long long integer(const std::string& name) const;
    double number(const std::string& name) const;
    const std::string& text(const std::string& name) const;
    const IntegerList& integers(const std::string& name) const;
    const std::map<std::string, ParamValue>& all() const { return values_; }
    // Whether the caller named the value rather than leaving it to its
    // starting value: commands that change only what they are given ask.
    bool given(const std::string& name) const { return given_.contains(name); }
    void markGiven(const std::string& name) { given_.insert(name); }

  private:
    std::map<std::string, ParamValue> values_;
    std::set<std::string> given_;
};

struct CommandSpec {
    std::string id;        // stable: "file.new", "image.canvas_size"
    std::string caption;   // menu text: "New..."
    std::string menu;      // "File", "Edit", "Image", "View", "Window"
    std::string shortcut;  // in the portable form "Ctrl+N"; empty for none
    std::vector<ParamSpec> params;
    // Returns false when the command refused (it has told the user why).
    std::function<bool(Workspace&, const ParamValues&)> run;
    // A command that changes the image runs in the edit bracket (undo step,
    // busy pointer, modified mark, redraw); with a repeat question it also
    // offers, on an animation, to run again on every frame.
    bool changesImage = false;
    // A command that changes the image but not the current layer's pixels
    // (the layer stack, the swap buffer, the selection) runs while those
    // pixels are locked, so that the user can still unlock, hide or merge the
    // layer; any other command that changes the image is refused then.
    bool keepsLayerPixels = false;
    std::string repeatQuestion;
    // A command that starts a program (a plug-in) runs this instead of `run`:
    // it answers the process id, 0 when the program could not be started.
    std::function<long long(Workspace&, const ParamValues&)> start;
    // What an option panel needs to show the command's result before it runs;
    // the layer that makes the command decides what it holds (empty: nothing).
    std::any preview;
};

struct CommandOutcome {
    // Cancelled: the user closed the command's dialog; nothing ran.
    enum class Status { Done, Refused, UnknownCommand, BadParameter, Cancelled };
    Status status = Status::Done;
    std::string error;  // what was wrong, for UnknownCommand and BadParameter
    // What a command with `start` answered: the process id, or 0.
    std::optional<long long> processId;
};

// Asks the user for a command's values: starts from what `values` holds,
// leaves the answer there and returns true, or returns false when cancelled.
using CommandDialog =
    std::function<bool(const CommandSpec& command, std::map<std::string, ParamValue>& values)>;

// Every menu command of the program, registered once. Menus, the automation
// method Wib_RunCommand and the command reference are all built from it.
class CommandRegistry {
  public:
    // A command registered twice under one id replaces the first. Either way
    // the observers hear of it.
    void add(CommandSpec command);
    const CommandSpec* find(const std::string& id) const;
    const std::vector<CommandSpec>& all() const { return commands_; }
    // Removes every command that `match` picks (the plug-ins of an earlier
    // listing); the observers hear of it once.
    void removeWhere(const std::function<bool(const CommandSpec&)>& match);

    // The starting values of the command's dialog.
    std::map<std::string, ParamValue> defaults(const Workspace& workspace,
                                               const CommandSpec& command) const;

    // Runs the command with `given` values, the dialog's starting values for
    // the rest. Unknown names, wrong types and values out of range are refused
    // before the command runs.
    CommandOutcome run(Workspace& workspace, const std::string& id,
                       const std::map<std::string, ParamValue>& given) const;

    // Runs the command as its menu item does: the dialog first when the
    // command has parameters, then the command with the dialog's answer.
    // Without a dialog (no interface) the starting values are taken as they are.
    // The dialog starts from `start` where it names a parameter, from the
    // command's own starting values elsewhere.
    CommandOutcome runAsking(Workspace& workspace, const std::string& id,
                             const std::map<std::string, ParamValue>& start = {}) const;

    // Asks for the values of `form`, a command's parameters that need not be
    // registered (a plug-in's own form), through the interface's dialog,
    // starting from `values`; false when cancelled. Without an interface the
    // values stay as they are.
    bool ask(const CommandSpec& form, std::map<std::string, ParamValue>& values) const {
        return !dialog_ || dialog_(form, values);
    }

    // The interface's dialogs, used by runAsking; empty removes them.
    void setDialog(CommandDialog dialog) { dialog_ = std::move(dialog); }

    // Told after every change to the table (menus follow it, and plug-ins add
    // commands while the program runs).
    ObserverList<> changed;

  private:
    std::vector<CommandSpec> commands_;
    CommandDialog dialog_;
};

// An integer parameter in [minimum, maximum]. Its dialog starts at what
// `current` says when given (the document's width, say), else at `fallback`.
ParamSpec IntegerParam(const char* name, const char* caption, double minimum, double maximum,
                       long long fallback,
                       std::function<ParamValue(const Workspace&)> current = nullptr);

// A number parameter in [minimum, maximum], starting as IntegerParam does.
ParamSpec NumberParam(const char* name, const char* caption, double minimum, double maximum,
                      double fallback,
                      std::function<ParamValue(const Workspace&)> current = nullptr);
// A colour packed R + 256 G + 65536 B.
ParamSpec ColourParam(const char* name, const char* caption, std::uint32_t fallback);
ParamSpec BooleanParam(const char* name, const char* caption, bool fallback);
// One of `choices`, by position from 0.
ParamSpec ChoiceParam(const char* name, const char* caption,
                      std::initializer_list<const char*> choices, int fallback);

// A text parameter, and a text parameter naming a file (its dialog offers a
// file chooser).
ParamSpec TextParam(const char* name, const char* caption, const char* fallback);
ParamSpec FilePathParam(const char* name, const char* caption);

// Checks one value against its parameter and brings it to the parameter's
// own type (an integral number for an Integer, say; a Choice's position for
// its caption given as text, in any letter case). Nothing when it does not
// fit; `error` then says why.
std::optional<ParamValue> CheckParam(const ParamSpec& spec, const ParamValue& value,
                                     std::string& error);

const char* ParamTypeName(ParamType type);

}  // namespace wib
