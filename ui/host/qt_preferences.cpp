// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/host/qt_preferences.h"

namespace wib {

namespace {

QString KeyPath(const std::string& section, const std::string& key) {
    return QString::fromStdString(section) + '/' + QString::fromStdString(key);
}

}  // namespace

QtPreferences::QtPreferences() : settings_("Wibbleton", "Wibbleton") {}

std::optional<std::string> QtPreferences::value(const std::string& section,
                                                const std::string& key) const {
    const QVariant stored = settings_.value(KeyPath(section, key));
    if (!stored.isValid()) {
        return std::nullopt;
    }
    return stored.toString().toStdString();
}

void QtPreferences::setValue(const std::string& section, const std::string& key,
                             const std::string& value) {
    settings_.setValue(KeyPath(section, key), QString::fromStdString(value));
}

}  // namespace wib
