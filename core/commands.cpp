// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/commands.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <sstream>

#include "core/image_edit.h"
#include "core/layer_edit.h"
#include "core/workspace.h"

namespace wib {

namespace {

std::string FormatLimit(double value) {
    std::ostringstream text;
    text << value;
    return text.str();
}

bool IsIntegerType(ParamType type) {
    return type == ParamType::Integer || type == ParamType::Colour || type == ParamType::Boolean ||
           type == ParamType::Choice;
}

// Whether `command` would change the pixels of a locked current layer; the
// user is told so, and the command does not run.
bool RefusedOnLockedLayer(Workspace& workspace, const CommandSpec& command) {
    if (!command.changesImage || command.keepsLayerPixels ||
        !LayerAt(workspace, CurrentLayer(workspace)).lockPixels) {
        return false;
    }
    workspace.host.prompter.message(kLayerLockedMessage);
    return true;
}

}  // namespace

long long ParamValues::integer(const std::string& name) const {
    return std::get<long long>(values_.at(name));
}

double ParamValues::number(const std::string& name) const {
    const ParamValue& value = values_.at(name);
    if (const auto* whole = std::get_if<long long>(&value)) {
        return static_cast<double>(*whole);
    }
    return std::get<double>(value);
}

const std::string& ParamValues::text(const std::string& name) const {
    return std::get<std::string>(values_.at(name));
}

const IntegerList& ParamValues::integers(const std::string& name) const {
    return std::get<IntegerList>(values_.at(name));
}

ParamSpec TextParam(const char* name, const char* caption, const char* fallback) {
    ParamSpec spec;
    spec.name = name;
    spec.caption = caption;
    spec.type = ParamType::Text;
    spec.fallback = std::string(fallback);
    return spec;
}

ParamSpec FilePathParam(const char* name, const char* caption) {
    ParamSpec spec = TextParam(name, caption, "");
    spec.type = ParamType::FilePath;
    return spec;
}

namespace {

ParamSpec Param(const char* name, const char* caption, ParamType type, ParamValue fallback) {
    ParamSpec spec;
    spec.name = name;
    spec.caption = caption;
    spec.type = type;
    spec.fallback = std::move(fallback);
    return spec;
}

}  // namespace

ParamSpec IntegerParam(const char* name, const char* caption, double minimum, double maximum,
                       long long fallback, std::function<ParamValue(const Workspace&)> current) {
    ParamSpec spec = Param(name, caption, ParamType::Integer, fallback);
    spec.minimum = minimum;
    spec.maximum = maximum;
    spec.current = std::move(current);
    return spec;
}

ParamSpec NumberParam(const char* name, const char* caption, double minimum, double maximum,
                      double fallback, std::function<ParamValue(const Workspace&)> current) {
    ParamSpec spec = Param(name, caption, ParamType::Number, fallback);
    spec.minimum = minimum;
    spec.maximum = maximum;
    spec.current = std::move(current);
    return spec;
}

ParamSpec ColourParam(const char* name, const char* caption, std::uint32_t fallback) {
    return Param(name, caption, ParamType::Colour, static_cast<long long>(fallback));
}

ParamSpec BooleanParam(const char* name, const char* caption, bool fallback) {
    return Param(name, caption, ParamType::Boolean, fallback ? -1LL : 0LL);
}

ParamSpec ChoiceParam(const char* name, const char* caption,
                      std::initializer_list<const char*> choices, int fallback) {
    ParamSpec spec = Param(name, caption, ParamType::Choice, static_cast<long long>(fallback));
    spec.choices.assign(choices.begin(), choices.end());
    return spec;
}

const char* ParamTypeName(ParamType type) {
    switch (type) {
        case ParamType::Integer:
            return "integer";
        case ParamType::Number:
            return "number";
        case ParamType::Text:
            return "text";
        case ParamType::Colour:
            return "colour";
        case ParamType::Boolean:
            return "boolean";
        case ParamType::Choice:
            return "choice";
        case ParamType::FilePath:
            return "path";
        case ParamType::IntegerList:
            return "integer list";
    }
    return "value";
}

namespace {

std::optional<ParamValue> CheckIntegerList(const ParamSpec& spec, const ParamValue& value,
                                           std::string& error) {
    const auto* list = std::get_if<IntegerList>(&value);
    if (list == nullptr ||
        (!spec.lengths.empty() &&
         std::find(spec.lengths.begin(), spec.lengths.end(), list->size()) == spec.lengths.end())) {
        std::ostringstream counts;
        for (std::size_t i = 0; i < spec.lengths.size(); ++i) {
            counts << (i == 0 ? "" : " or ") << spec.lengths[i];
        }
        error = spec.name + " must be a list of " +
                (counts.str().empty() ? "" : counts.str() + " ") + "integers";
        return std::nullopt;
    }
    for (const long long v : *list) {
        if (static_cast<double>(v) < spec.minimum || static_cast<double>(v) > spec.maximum) {
            error = spec.name + " values must be from " + FormatLimit(spec.minimum) + " to " +
                    FormatLimit(spec.maximum);
            return std::nullopt;
        }
    }
    return *list;
}

// A choice named by its caption, in any letter case and without the
// accelerator mark: "replace" picks "Replace".
std::optional<ParamValue> ChoiceByName(const ParamSpec& spec, const std::string& name,
                                       std::string& error) {
    const auto plain = [](const std::string& text) {
        std::string out;
        for (const char c : text) {
            if (c != '&') {
                out.push_back(static_cast<char>(std::tolower(static_cast<unsigned char>(c))));
            }
        }
        return out;
    };
    for (std::size_t i = 0; i < spec.choices.size(); ++i) {
        if (plain(spec.choices[i]) == plain(name)) {
            return static_cast<long long>(i);
        }
    }
    error = spec.name + " has no choice " + name;
    return std::nullopt;
}

}  // namespace

std::optional<ParamValue> CheckParam(const ParamSpec& spec, const ParamValue& value,
                                     std::string& error) {
    if (spec.type == ParamType::IntegerList) {
        return CheckIntegerList(spec, value, error);
    }
    if (spec.type == ParamType::Text || spec.type == ParamType::FilePath) {
        if (const auto* text = std::get_if<std::string>(&value)) {
            return *text;
        }
        error = spec.name + " must be text";
        return std::nullopt;
    }
    if (const auto* name = std::get_if<std::string>(&value);
        name != nullptr && spec.type == ParamType::Choice) {
        return ChoiceByName(spec, *name, error);
    }
    double number = 0;
    if (const auto* whole = std::get_if<long long>(&value)) {
        number = static_cast<double>(*whole);
    } else if (const auto* real = std::get_if<double>(&value)) {
        number = *real;
    } else {
        error = spec.name + " must be a number";
        return std::nullopt;
    }
    if (!std::isfinite(number)) {
        error = spec.name + " must be a finite number";
        return std::nullopt;
    }
    double minimum = spec.minimum;
    double maximum = spec.maximum;
    switch (spec.type) {
        case ParamType::Colour:
            minimum = 0;
            maximum = 16777215;
            break;
        case ParamType::Boolean:
            minimum = -1;
            maximum = 0;
            break;
        case ParamType::Choice:
            minimum = 0;
            maximum = static_cast<double>(spec.choices.size()) - 1;
            break;
        default:
            break;
    }
    if (IsIntegerType(spec.type) && number != std::floor(number)) {
        error = spec.name + " must be a whole number";
        return std::nullopt;
    }
    if (number < minimum || number > maximum) {
        error = spec.name + " must be from " + FormatLimit(minimum) + " to " + FormatLimit(maximum);
        return std::nullopt;
    }
    if (spec.nonZero && number == 0) {
        error = spec.name + " must not be 0";
        return std::nullopt;
    }
    if (IsIntegerType(spec.type)) {
        return static_cast<long long>(number);
    }
    return number;
}

void CommandRegistry::add(CommandSpec command) {
    const auto existing =
        std::find_if(commands_.begin(), commands_.end(),
                     [&command](const CommandSpec& one) { return one.id == command.id; });
    if (existing != commands_.end()) {
        *existing = std::move(command);
    } else {
        commands_.push_back(std::move(command));
    }
    changed.notify();
}

void CommandRegistry::removeWhere(const std::function<bool(const CommandSpec&)>& match) {
    if (std::erase_if(commands_, match) > 0) {
        changed.notify();
    }
}

const CommandSpec* CommandRegistry::find(const std::string& id) const {
    for (const CommandSpec& command : commands_) {
        if (command.id == id) {
            return &command;
        }
    }
    return nullptr;
}

std::map<std::string, ParamValue> CommandRegistry::defaults(const Workspace& workspace,
                                                            const CommandSpec& command) const {
    std::map<std::string, ParamValue> values;
    for (const ParamSpec& spec : command.params) {
        values[spec.name] = spec.current ? spec.current(workspace) : spec.fallback;
    }
    return values;
}

CommandOutcome CommandRegistry::run(Workspace& workspace, const std::string& id,
                                    const std::map<std::string, ParamValue>& given) const {
    using Status = CommandOutcome::Status;
    const CommandSpec* command = find(id);
    if (command == nullptr) {
        return {Status::UnknownCommand, "no command " + id};
    }
    auto values = defaults(workspace, *command);
    for (const auto& [name, value] : given) {
        const ParamSpec* spec = nullptr;
        for (const ParamSpec& candidate : command->params) {
            if (candidate.name == name) {
                spec = &candidate;
            }
        }
        if (spec == nullptr) {
            return {Status::BadParameter, id + " has no parameter " + name};
        }
        std::string error;
        const auto checked = CheckParam(*spec, value, error);
        if (!checked) {
            return {Status::BadParameter, error};
        }
        values[name] = *checked;
    }
    // A copy: a command may add commands as it runs, which moves the table.
    const CommandSpec spec = *command;
    ParamValues checked(std::move(values));
    for (const auto& entry : given) {
        checked.markGiven(entry.first);
    }
    if (spec.start) {
        return {Status::Done, {}, spec.start(workspace, checked)};
    }
    if (RefusedOnLockedLayer(workspace, spec)) {
        return {Status::Refused, {}};
    }
    const auto runOnce = [&] { return spec.run(workspace, checked); };
    const bool done =
        spec.changesImage ? RunImageOperation(workspace, runOnce, spec.repeatQuestion) : runOnce();
    if (!done) {
        return {Status::Refused, {}};
    }
    return {};
}

CommandOutcome CommandRegistry::runAsking(Workspace& workspace, const std::string& id,
                                          const std::map<std::string, ParamValue>& start) const {
    const CommandSpec* command = find(id);
    if (command == nullptr) {
        return {CommandOutcome::Status::UnknownCommand, "no command " + id};
    }
    auto values = defaults(workspace, *command);
    for (const auto& [name, value] : start) {
        if (values.contains(name)) {
            values[name] = value;
        }
    }
    if (RefusedOnLockedLayer(workspace, *command)) {
        return {CommandOutcome::Status::Refused, {}};
    }
    if (!command->params.empty() && dialog_ && !dialog_(*command, values)) {
        return {CommandOutcome::Status::Cancelled, {}};
    }
    return run(workspace, id, values);
}

}  // namespace wib
