// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <string>
#include <utility>

#include "core/host/controls.h"

namespace wib::testing {

// Panel controls held in a map. A value is taken only when it is of the same
// kind as the control's current one (a whole number may go to a number
// control); each accepted change counts as one run of the change handler.
class MapControls : public Controls {
  public:
    std::optional<ParamValue> get(const std::string& panel, const std::string& control) override;
    bool set(const std::string& panel, const std::string& control,
             const ParamValue& value) override;

    std::map<std::pair<std::string, std::string>, ParamValue> values;
    int changeHandlerRuns = 0;
};

}  // namespace wib::testing
