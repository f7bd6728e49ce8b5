// SPDX-License-Identifier: GPL-3.0-or-later
// Clock: a small window beside the program with an analogue clock face and
// the time in figures. It ends with the program or when closed.
#include <QApplication>
#include <QLabel>
#include <QTime>
#include <QTimer>
#include <QVBoxLayout>
#include <QWidget>

#include <iostream>

#include "clock_face.h"
#include "companion.h"

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    try {
        const companion::ProgramLink link;
        QWidget window;
        window.setWindowTitle(QStringLiteral("Clock"));
        auto* face = new ClockFace(&window);
        auto* figures = new QLabel(&window);
        figures->setAlignment(Qt::AlignCenter);
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(face, 1);
        layout->addWidget(figures);
        const auto tick = [face, figures] {
            const QTime now = QTime::currentTime();
            face->setTime(now);
            figures->setText(now.toString(QStringLiteral("HH:mm:ss")));
        };
        tick();
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, tick);
        timer.start(1000);
        window.resize(200, 230);
        companion::ShowWithProgramsStyle(window);
        return app.exec();
    } catch (const std::exception& error) {
        std::cerr << "Clock2: " << error.what() << '\n';
        return 1;
    }
}
