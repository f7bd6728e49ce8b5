// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/panel_memory.h"

#include <QSettings>
#include <QVariant>
#include <QVariantList>

namespace wib {

namespace {

QString Key(const CommandSpec& command, const ParamSpec& spec) {
    return QStringLiteral("FilterPanels/") + QString::fromStdString(command.id) + '/' +
           QString::fromStdString(spec.name);
}

QVariant Stored(const ParamValue& value) {
    if (const auto* whole = std::get_if<long long>(&value)) {
        return QVariant::fromValue(static_cast<qlonglong>(*whole));
    }
    if (const auto* real = std::get_if<double>(&value)) {
        return *real;
    }
    if (const auto* text = std::get_if<std::string>(&value)) {
        return QString::fromStdString(*text);
    }
    QVariantList list;
    for (const long long v : std::get<IntegerList>(value)) {
        list.append(QVariant::fromValue(static_cast<qlonglong>(v)));
    }
    return list;
}

// Settings files give back text for numbers, so the parameter's type says
// what to read.
ParamValue Read(const ParamSpec& spec, const QVariant& stored) {
    switch (spec.type) {
        case ParamType::Number:
            return stored.toDouble();
        case ParamType::Text:
        case ParamType::FilePath:
            return stored.toString().toStdString();
        case ParamType::IntegerList: {
            IntegerList list;
            for (const QVariant& item : stored.toList()) {
                list.push_back(item.toLongLong());
            }
            return list;
        }
        case ParamType::Integer:
        case ParamType::Colour:
        case ParamType::Boolean:
        case ParamType::Choice:
            break;
    }
    return static_cast<long long>(stored.toLongLong());
}

}  // namespace

std::map<std::string, ParamValue> TableDefaults(const CommandSpec& command) {
    std::map<std::string, ParamValue> values;
    for (const ParamSpec& spec : command.params) {
        values[spec.name] = spec.fallback;
    }
    return values;
}

void RecallPanelValues(const QSettings& settings, const CommandSpec& command,
                       std::map<std::string, ParamValue>& values) {
    for (const ParamSpec& spec : command.params) {
        const auto current = values.find(spec.name);
        if (current != values.end() && current->second != spec.fallback) {
            continue;
        }
        const QVariant stored = settings.value(Key(command, spec));
        if (!stored.isValid()) {
            continue;
        }
        std::string error;
        if (const auto checked = CheckParam(spec, Read(spec, stored), error)) {
            values[spec.name] = *checked;
        }
    }
}

void RememberPanelValues(QSettings& settings, const CommandSpec& command,
                         const std::map<std::string, ParamValue>& values) {
    for (const ParamSpec& spec : command.params) {
        if (const auto value = values.find(spec.name); value != values.end()) {
            settings.setValue(Key(command, spec), Stored(value->second));
        }
    }
}

}  // namespace wib
