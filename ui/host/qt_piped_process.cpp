// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/host/qt_piped_process.h"

#include <algorithm>

namespace wib {

namespace {

// Writes are handed to the process a slice at a time, so that its buffer
// never holds more than one slice beyond what the pipe has taken.
constexpr qint64 kWriteSlice = qint64{1} << 20;

}  // namespace

QtPipedProcess::QtPipedProcess(const QString& program, const QStringList& arguments) {
    process_.start(program, arguments);
    started_ = process_.waitForStarted();
}

QtPipedProcess::~QtPipedProcess() {
    if (process_.state() != QProcess::NotRunning) {
        kill();
    }
}

bool QtPipedProcess::write(const std::uint8_t* data, std::size_t size) {
    const char* bytes = reinterpret_cast<const char*>(data);
    std::size_t done = 0;
    while (done < size) {
        if (process_.state() != QProcess::Running) {
            return false;
        }
        const qint64 slice = std::min<qint64>(kWriteSlice, static_cast<qint64>(size - done));
        if (process_.write(bytes + done, slice) != slice) {
            return false;
        }
        done += static_cast<std::size_t>(slice);
        while (process_.bytesToWrite() > 0) {
            if (!process_.waitForBytesWritten(-1)) {
                return false;
            }
        }
        errors_ += process_.readAllStandardError();
    }
    return true;
}

std::size_t QtPipedProcess::read(std::uint8_t* data, std::size_t size) {
    while (process_.bytesAvailable() == 0) {
        if (process_.state() != QProcess::Running || !process_.waitForReadyRead(-1)) {
            break;
        }
    }
    errors_ += process_.readAllStandardError();
    const qint64 got = process_.read(reinterpret_cast<char*>(data), static_cast<qint64>(size));
    return got > 0 ? static_cast<std::size_t>(got) : 0;
}

ProcessEnd QtPipedProcess::finish() {
    process_.closeWriteChannel();
    process_.waitForFinished(-1);
    errors_ += process_.readAllStandardError();
    ProcessEnd end;
    end.exitCode = process_.exitStatus() == QProcess::NormalExit ? process_.exitCode() : -1;
    const QList<QByteArray> lines = errors_.trimmed().split('\n');
    end.lastErrorLine = lines.back().trimmed().toStdString();
    return end;
}

void QtPipedProcess::kill() {
    process_.kill();
    process_.waitForFinished(-1);
}

}  // namespace wib
