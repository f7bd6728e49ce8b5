// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/host/controls.h"

namespace wib {

// Panel controls found among the program's widgets by object name: the
// panel's, then the control's inside it. Check boxes read and take -1 / 0,
// sliders and spin boxes their value, lists their position, text fields their
// text; a plain button is clicked by setting -1.
class QtControls : public Controls {
  public:
    std::optional<ParamValue> get(const std::string& panel, const std::string& control) override;
    bool set(const std::string& panel, const std::string& control,
             const ParamValue& value) override;
};

}  // namespace wib
