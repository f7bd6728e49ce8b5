// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSettings>

#include "core/host/preferences.h"

namespace wib {

// Preferences kept by QSettings under organisation and application
// "Wibbleton"; each section is a group.
class QtPreferences : public Preferences {
  public:
    QtPreferences();
    std::optional<std::string> value(const std::string& section,
                                     const std::string& key) const override;
    void setValue(const std::string& section, const std::string& key,
                  const std::string& value) override;

  private:
    mutable QSettings settings_;
};

}  // namespace wib
