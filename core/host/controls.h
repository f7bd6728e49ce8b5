#pragma once

#include <optional>
#include <string>
#include <variant>

namespace wib {

// A value a panel control holds: a number (sliders, spin boxes, check boxes as
// -1 / 0, list positions) or text.
using ControlValue = std::variant<long long, double, std::string>;

// Panel controls reached by the panel's and the control's object names, as a
// plug-in reaches them. Setting a value runs the control's change handler,
// exactly as a user's click would.
class Controls {
  public:
    virtual ~Controls() = default;
    // Nothing when there is no such panel or control.
    virtual std::optional<ControlValue> get(const std::string& panel,
                                            const std::string& control) = 0;
    // False when there is no such panel or control, or the value does not suit it.
    virtual bool set(const std::string& panel, const std::string& control,
                     const ControlValue& value) = 0;
};

}  // namespace wib
