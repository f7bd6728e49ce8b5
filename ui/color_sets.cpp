// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/color_sets.h"

#include <QApplication>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>

namespace wib {

namespace {

QPalette DarkPalette() {
    QPalette palette;
    const QColor window(53, 53, 56);
    const QColor base(36, 36, 38);
    const QColor text(225, 225, 225);
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, window);
    palette.setColor(QPalette::ToolTipBase, base);
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::Button, window);
    palette.setColor(QPalette::ButtonText, text);
    palette.setColor(QPalette::Highlight, QColor(64, 128, 200));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Dark, QColor(30, 30, 32));
    palette.setColor(QPalette::Disabled, QPalette::Text, QColor(120, 120, 120));
    palette.setColor(QPalette::Disabled, QPalette::ButtonText, QColor(120, 120, 120));
    return palette;
}

QPalette LightPalette() {
    QPalette palette(QColor(236, 236, 236));
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::Dark, QColor(150, 150, 150));
    return palette;
}

}  // namespace

std::string ApplyColorSet(const std::string& name) {
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    if (name == "Dark") {
        QApplication::setPalette(DarkPalette());
        return name;
    }
    if (name == "Light") {
        QApplication::setPalette(LightPalette());
        return name;
    }
    QApplication::setPalette(QApplication::style()->standardPalette());
    return "Default";
}

}  // namespace wib
