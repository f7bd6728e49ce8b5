// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/param_dialog.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QSpinBox>

#include "ui/qt_colour.h"

namespace wib {

namespace {

long long StartInteger(const ParamValue& value) {
    if (const auto* whole = std::get_if<long long>(&value)) {
        return *whole;
    }
    if (const auto* real = std::get_if<double>(&value)) {
        return static_cast<long long>(*real);
    }
    return 0;
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

ParamDialog::ParamDialog(const CommandSpec& command, const std::map<std::string, ParamValue>& start,
                         QWidget* parent)
    : QDialog(parent) {
    setObjectName(QString::fromStdString(command.id));
    setWindowTitle(
        QString::fromStdString(command.caption).remove('&').remove(QStringLiteral("...")));
    auto* form = new QFormLayout(this);
    for (const ParamSpec& spec : command.params) {
        const std::string name = spec.name;
        const ParamValue initial = start.count(name) ? start.at(name) : spec.fallback;
        const QString label = QString::fromStdString(spec.caption) + ':';
        switch (spec.type) {
            case ParamType::Integer: {
                auto* field = new QSpinBox(this);
                field->setRange(static_cast<int>(spec.minimum), static_cast<int>(spec.maximum));
                field->setValue(static_cast<int>(StartInteger(initial)));
                form->addRow(label, field);
                readers_.push_back([name, field] {
                    return std::pair{name, ParamValue{static_cast<long long>(field->value())}};
                });
                break;
            }
            case ParamType::Number: {
                auto* field = new QDoubleSpinBox(this);
                field->setRange(spec.minimum, spec.maximum);
                field->setDecimals(3);
                field->setValue(std::holds_alternative<double>(initial) ? std::get<double>(initial)
                                                                        : StartInteger(initial));
                form->addRow(label, field);
                readers_.push_back([name, field] {
                    return std::pair{name, ParamValue{field->value()}};
                });
                break;
            }
            case ParamType::Text: {
                auto* field = new QLineEdit(this);
                if (const auto* text = std::get_if<std::string>(&initial)) {
                    field->setText(QString::fromStdString(*text));
                }
                form->addRow(label, field);
                readers_.push_back([name, field] {
                    return std::pair{name, ParamValue{field->text().toStdString()}};
                });
                break;
            }
            case ParamType::FilePath: {
                auto* row = new QWidget(this);
                auto* layout = new QHBoxLayout(row);
                layout->setContentsMargins(0, 0, 0, 0);
                auto* field = new QLineEdit(row);
                if (const auto* text = std::get_if<std::string>(&initial)) {
                    field->setText(QString::fromStdString(*text));
                }
                auto* browse = new QPushButton(tr("Browse..."), row);
                const QString filter =
                    spec.choices.empty() ? QString() : QString::fromStdString(spec.choices[0]);
                connect(browse, &QPushButton::clicked, this, [this, field, filter] {
                    const QString path =
                        QFileDialog::getOpenFileName(this, windowTitle(), field->text(), filter);
                    if (!path.isEmpty()) {
                        field->setText(path);
                    }
                });
                layout->addWidget(field, 1);
                layout->addWidget(browse);
                form->addRow(label, row);
                readers_.push_back([name, field] {
                    return std::pair{name, ParamValue{field->text().toStdString()}};
                });
                break;
            }
            case ParamType::Boolean: {
                auto* field = new QCheckBox(this);
                field->setChecked(StartInteger(initial) == -1);
                form->addRow(label, field);
                readers_.push_back([name, field] {
                    return std::pair{name, ParamValue{field->isChecked() ? -1LL : 0LL}};
                });
                break;
            }
            case ParamType::Choice: {
                auto* field = new QComboBox(this);
                for (const std::string& choice : spec.choices) {
                    field->addItem(QString::fromStdString(choice));
                }
                field->setCurrentIndex(static_cast<int>(StartInteger(initial)));
                form->addRow(label, field);
                readers_.push_back([name, field] {
                    return std::pair{name,
                                     ParamValue{static_cast<long long>(field->currentIndex())}};
                });
                break;
            }
            case ParamType::IntegerList: {
                auto* field = new QLineEdit(this);
                QStringList items;
                if (const auto* list = std::get_if<IntegerList>(&initial)) {
                    for (const long long v : *list) {
                        items << QString::number(v);
                    }
                }
                field->setText(items.join(' '));
                form->addRow(label, field);
                readers_.push_back([name, field] {
                    return std::pair{name, ParamValue{ParseIntegerList(field->text())}};
                });
                break;
            }
            case ParamType::Colour: {
                auto* field = new QPushButton(this);
                auto colour = std::make_shared<QColor>(PackedToQColor(StartInteger(initial)));
                auto show = [field, colour] { field->setText(colour->name()); };
                show();
                connect(field, &QPushButton::clicked, this, [this, colour, show] {
                    const QColor picked = QColorDialog::getColor(*colour, this);
                    if (picked.isValid()) {
                        *colour = picked;
                        show();
                    }
                });
                form->addRow(label, field);
                readers_.push_back([name, colour] {
                    return std::pair{name, ParamValue{QColorToPacked(*colour)}};
                });
                break;
            }
        }
    }
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    form->addRow(buttons);
}

std::map<std::string, ParamValue> ParamDialog::values() const {
    std::map<std::string, ParamValue> result;
    for (const auto& read : readers_) {
        result.insert(read());
    }
    return result;
}

}  // namespace wib
