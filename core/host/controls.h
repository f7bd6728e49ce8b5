// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>

#include "core/param_value.h"

namespace wib {

// Panel controls reached by the panel's and the control's object names, as a
// plug-in reaches them. Setting a value runs the control's change handler,
// exactly as a user's click would.
class Controls {
  public:
    virtual ~Controls() = default;
    // Nothing when there is no such panel or control.
    virtual std::optional<ParamValue> get(const std::string& panel, const std::string& control) = 0;
    // False when there is no such panel or control, or the value does not suit it.
    virtual bool set(const std::string& panel, const std::string& control,
                     const ParamValue& value) = 0;
};

}  // namespace wib
