// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/qt_controls.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QApplication>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>
#include <QWidget>

namespace wib {

namespace {

QWidget* FindControl(const std::string& panel, const std::string& control) {
    const QString panelName = QString::fromStdString(panel);
    const QString controlName = QString::fromStdString(control);
    for (QWidget* widget : QApplication::allWidgets()) {
        if (widget->objectName() != panelName) {
            continue;
        }
        if (auto* found = widget->findChild<QWidget*>(controlName)) {
            return found;
        }
    }
    return nullptr;
}

std::optional<long long> AsInteger(const ParamValue& value) {
    if (const auto* whole = std::get_if<long long>(&value)) {
        return *whole;
    }
    if (const auto* real = std::get_if<double>(&value)) {
        if (*real == static_cast<double>(static_cast<long long>(*real))) {
            return static_cast<long long>(*real);
        }
    }
    return std::nullopt;
}

std::optional<double> AsNumber(const ParamValue& value) {
    if (const auto* whole = std::get_if<long long>(&value)) {
        return static_cast<double>(*whole);
    }
    if (const auto* real = std::get_if<double>(&value)) {
        return *real;
    }
    return std::nullopt;
}

template <typename Widget, typename Value>
bool SetIfInRange(Widget* widget, Value value) {
    if (value < widget->minimum() || value > widget->maximum()) {
        return false;
    }
    widget->setValue(value);
    return true;
}

}  // namespace

std::optional<ParamValue> QtControls::get(const std::string& panel, const std::string& control) {
    QWidget* widget = FindControl(panel, control);
    if (widget == nullptr) {
        return std::nullopt;
    }
    if (auto* button = qobject_cast<QAbstractButton*>(widget)) {
        return ParamValue{button->isChecked() ? -1LL : 0LL};
    }
    if (auto* slider = qobject_cast<QAbstractSlider*>(widget)) {
        return ParamValue{static_cast<long long>(slider->value())};
    }
    if (auto* spin = qobject_cast<QSpinBox*>(widget)) {
        return ParamValue{static_cast<long long>(spin->value())};
    }
    if (auto* spin = qobject_cast<QDoubleSpinBox*>(widget)) {
        return ParamValue{spin->value()};
    }
    if (auto* list = qobject_cast<QComboBox*>(widget)) {
        return ParamValue{static_cast<long long>(list->currentIndex())};
    }
    if (auto* field = qobject_cast<QLineEdit*>(widget)) {
        return ParamValue{field->text().toStdString()};
    }
    if (auto* label = qobject_cast<QLabel*>(widget)) {
        return ParamValue{label->text().toStdString()};
    }
    return std::nullopt;
}

bool QtControls::set(const std::string& panel, const std::string& control,
                     const ParamValue& value) {
    QWidget* widget = FindControl(panel, control);
    if (widget == nullptr) {
        return false;
    }
    const auto integer = AsInteger(value);
    if (auto* button = qobject_cast<QAbstractButton*>(widget)) {
        if (!integer) {
            return false;
        }
        if (button->isCheckable()) {
            button->setChecked(*integer == -1);
        } else if (*integer == -1) {
            button->click();
        }
        return true;
    }
    if (auto* slider = qobject_cast<QAbstractSlider*>(widget)) {
        return integer && SetIfInRange(slider, static_cast<int>(*integer));
    }
    if (auto* spin = qobject_cast<QSpinBox*>(widget)) {
        return integer && SetIfInRange(spin, static_cast<int>(*integer));
    }
    if (auto* spin = qobject_cast<QDoubleSpinBox*>(widget)) {
        const auto number = AsNumber(value);
        return number && SetIfInRange(spin, *number);
    }
    if (auto* list = qobject_cast<QComboBox*>(widget)) {
        if (!integer || *integer < 0 || *integer >= list->count()) {
            return false;
        }
        list->setCurrentIndex(static_cast<int>(*integer));
        return true;
    }
    if (auto* field = qobject_cast<QLineEdit*>(widget)) {
        const auto* text = std::get_if<std::string>(&value);
        if (text == nullptr) {
            return false;
        }
        field->setText(QString::fromStdString(*text));
        return true;
    }
    return false;
}

}  // namespace wib
