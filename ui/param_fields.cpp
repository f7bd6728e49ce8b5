// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/param_fields.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QSignalBlocker>
#include <QSpinBox>
#include <memory>

#include "ui/qt_colour.h"

namespace wib {

namespace {

long long AsInteger(const ParamValue& value) {
    if (const auto* whole = std::get_if<long long>(&value)) {
        return *whole;
    }
    if (const auto* real = std::get_if<double>(&value)) {
        return static_cast<long long>(*real);
    }
    return 0;
}

double AsNumber(const ParamValue& value) {
    if (const auto* real = std::get_if<double>(&value)) {
        return *real;
    }
    return static_cast<double>(AsInteger(value));
}

QString AsText(const ParamValue& value) {
    const auto* text = std::get_if<std::string>(&value);
    return text != nullptr ? QString::fromStdString(*text) : QString();
}

QString ListText(const ParamValue& value) {
    QStringList items;
    if (const auto* list = std::get_if<IntegerList>(&value)) {
        for (const long long v : *list) {
            items << QString::number(v);
        }
    }
    return items.join(' ');
}

// Integers separated by spaces or commas; a word that is no integer ends up
// as a list of the wrong length, which the command refuses by name.
IntegerList ParseIntegerList(const QString& text) {
    IntegerList list;
    for (const QString& item :
         text.split(QRegularExpression(QStringLiteral("[\\s,]+")), Qt::SkipEmptyParts)) {
        bool whole = false;
        const long long v = item.toLongLong(&whole);
        if (!whole) {
            return {};
        }
        list.push_back(v);
    }
    return list;
}

}  // namespace

ParamFields::ParamFields(const CommandSpec& command, const std::map<std::string, ParamValue>& start,
                         QWidget* parent)
    : QWidget(parent), form_(new QFormLayout(this)) {
    form_->setContentsMargins(0, 0, 0, 0);
    for (const ParamSpec& spec : command.params) {
        addField(spec);
        fields_.at(spec.name).write(start.count(spec.name) ? start.at(spec.name) : spec.fallback);
    }
}

void ParamFields::addField(const ParamSpec& spec) {
    const QString label = QString::fromStdString(spec.caption) + ':';
    const auto tell = [this] { Q_EMIT changed(); };
    Field field;
    switch (spec.type) {
        case ParamType::Integer: {
            auto* box = new QSpinBox(this);
            box->setRange(static_cast<int>(spec.minimum), static_cast<int>(spec.maximum));
            connect(box, &QSpinBox::valueChanged, this, tell);
            form_->addRow(label, box);
            field = {[box] { return ParamValue{static_cast<long long>(box->value())}; },
                     [box](const ParamValue& v) { box->setValue(static_cast<int>(AsInteger(v))); }};
            break;
        }
        case ParamType::Number: {
            auto* box = new QDoubleSpinBox(this);
            box->setRange(spec.minimum, spec.maximum);
            box->setDecimals(3);
            connect(box, &QDoubleSpinBox::valueChanged, this, tell);
            form_->addRow(label, box);
            field = {[box] { return ParamValue{box->value()}; },
                     [box](const ParamValue& v) { box->setValue(AsNumber(v)); }};
            break;
        }
        case ParamType::Text: {
            auto* line = new QLineEdit(this);
            connect(line, &QLineEdit::textChanged, this, tell);
            form_->addRow(label, line);
            field = {[line] { return ParamValue{line->text().toStdString()}; },
                     [line](const ParamValue& v) { line->setText(AsText(v)); }};
            break;
        }
        case ParamType::FilePath: {
            auto* row = new QWidget(this);
            auto* layout = new QHBoxLayout(row);
            layout->setContentsMargins(0, 0, 0, 0);
            auto* line = new QLineEdit(row);
            auto* browse = new QPushButton(tr("Browse..."), row);
            const QString filter =
                spec.choices.empty() ? QString() : QString::fromStdString(spec.choices[0]);
            connect(browse, &QPushButton::clicked, this, [this, line, filter] {
                const QString path = QFileDialog::getOpenFileName(this, window()->windowTitle(),
                                                                  line->text(), filter);
                if (!path.isEmpty()) {
                    line->setText(path);
                }
            });
            connect(line, &QLineEdit::textChanged, this, tell);
            layout->addWidget(line, 1);
            layout->addWidget(browse);
            form_->addRow(label, row);
            field = {[line] { return ParamValue{line->text().toStdString()}; },
                     [line](const ParamValue& v) { line->setText(AsText(v)); }};
            break;
        }
        case ParamType::Boolean: {
            auto* box = new QCheckBox(this);
            connect(box, &QCheckBox::toggled, this, tell);
            form_->addRow(label, box);
            field = {[box] { return ParamValue{box->isChecked() ? -1LL : 0LL}; },
                     [box](const ParamValue& v) { box->setChecked(AsInteger(v) == -1); }};
            break;
        }
        case ParamType::Choice: {
            auto* box = new QComboBox(this);
            for (const std::string& choice : spec.choices) {
                box->addItem(QString::fromStdString(choice));
            }
            connect(box, &QComboBox::currentIndexChanged, this, tell);
            form_->addRow(label, box);
            field = {[box] { return ParamValue{static_cast<long long>(box->currentIndex())}; },
                     [box](const ParamValue& v) {
                         box->setCurrentIndex(static_cast<int>(AsInteger(v)));
                     }};
            break;
        }
        case ParamType::IntegerList: {
            auto* line = new QLineEdit(this);
            connect(line, &QLineEdit::textChanged, this, tell);
            form_->addRow(label, line);
            field = {[line] { return ParamValue{ParseIntegerList(line->text())}; },
                     [line](const ParamValue& v) { line->setText(ListText(v)); }};
            break;
        }
        case ParamType::Colour: {
            auto* button = new QPushButton(this);
            auto colour = std::make_shared<QColor>();
            auto show = [button, colour] { button->setText(colour->name()); };
            connect(button, &QPushButton::clicked, this, [this, colour, show] {
                const QColor picked = QColorDialog::getColor(*colour, this);
                if (picked.isValid()) {
                    *colour = picked;
                    show();
                    Q_EMIT changed();
                }
            });
            form_->addRow(label, button);
            field = {[colour] { return ParamValue{QColorToPacked(*colour)}; },
                     [colour, show](const ParamValue& v) {
                         *colour = PackedToQColor(AsInteger(v));
                         show();
                     }};
            break;
        }
    }
    fields_[spec.name] = std::move(field);
}

std::map<std::string, ParamValue> ParamFields::values() const {
    std::map<std::string, ParamValue> result;
    for (const auto& [name, field] : fields_) {
        result[name] = field.read();
    }
    return result;
}

void ParamFields::setValues(const std::map<std::string, ParamValue>& values) {
    {
        // One change told for the lot, not one per field.
        const QSignalBlocker quiet(this);
        for (const auto& [name, value] : values) {
            if (const auto field = fields_.find(name); field != fields_.end()) {
                field->second.write(value);
            }
        }
    }
    Q_EMIT changed();
}

}  // namespace wib
