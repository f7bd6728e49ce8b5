// SPDX-License-Identifier: GPL-3.0-or-later
// Calendar: a small window beside the program with a month calendar, today
// marked. It ends with the program or when closed.
#include <QApplication>
#include <QCalendarWidget>
#include <QDate>

#include <iostream>

#include "companion.h"

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    try {
        const companion::ProgramLink link;
        QCalendarWidget calendar;
        calendar.setWindowTitle(QStringLiteral("Calendar"));
        calendar.setGridVisible(true);
        calendar.setSelectedDate(QDate::currentDate());
        companion::ShowWithProgramsStyle(calendar);
        return app.exec();
    } catch (const std::exception& error) {
        std::cerr << "CalendarWidget: " << error.what() << '\n';
        return 1;
    }
}
