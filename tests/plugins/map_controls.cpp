// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/plugins/map_controls.h"

namespace wib::testing {

std::optional<ParamValue> MapControls::get(const std::string& panel, const std::string& control) {
    const auto found = values.find({panel, control});
    if (found == values.end()) {
        return std::nullopt;
    }
    return found->second;
}

bool MapControls::set(const std::string& panel, const std::string& control,
                      const ParamValue& value) {
    const auto found = values.find({panel, control});
    if (found == values.end()) {
        return false;
    }
    ParamValue accepted = value;
    if (std::holds_alternative<double>(found->second) && std::holds_alternative<long long>(value)) {
        accepted = static_cast<double>(std::get<long long>(value));
    }
    if (accepted.index() != found->second.index()) {
        return false;
    }
    found->second = accepted;
    ++changeHandlerRuns;
    return true;
}

}  // namespace wib::testing
