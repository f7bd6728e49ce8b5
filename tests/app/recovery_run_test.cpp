// SPDX-License-Identifier: GPL-3.0-or-later
// Runs the real program in headless mode, ends it with kill -9 and starts it
// again: the work painted through a plug-in comes back.
#include <gtest/gtest.h>

#include <signal.h>

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <memory>

namespace {

const QString kRecoverLine = "Question: Wibbleton closed without saving your work. Recover it? -> ";

class RecoveryRun : public ::testing::Test {
  protected:
    QProcessEnvironment environment() const {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("HOME", home.path());
        environment.insert("XDG_CONFIG_HOME", home.path() + "/config");
        environment.insert("XDG_DATA_HOME", home.path() + "/data");
        environment.insert("PYTHONPATH", WIB_PYTHON_SDK);
        return environment;
    }
    // Starts a copy serving `name`; its standard error up to the end of
    // start-up (a plug-in's first call is taken only then), any start-up
    // question included.
    std::unique_ptr<QProcess> start(const QString& name, const QString& answer,
                                    QStringList& lines) {
        auto program = std::make_unique<QProcess>();
        program->setProcessEnvironment(environment());
        program->setReadChannel(QProcess::StandardError);
        program->start(WIB_PROGRAM,
                       {"--headless", "--listen", name, "--token", "T", "--answer", answer});
        EXPECT_TRUE(program->waitForStarted(10000));
        QByteArray pending;
        bool serving = false;
        while (!serving && program->waitForReadyRead(20000)) {
            pending += program->readAllStandardError();
            while (pending.contains('\n')) {
                const int end = pending.indexOf('\n');
                lines << QString::fromUtf8(pending.left(end));
                pending.remove(0, end + 1);
                serving = serving || lines.back().startsWith("Serving plug-ins on ");
            }
        }
        EXPECT_TRUE(serving);
        client(name, "w.Wib_GetR(0, 0)");
        do {
            pending += program->readAllStandardError();
        } while (program->waitForReadyRead(500));
        for (const QByteArray& line : pending.split('\n')) {
            lines << QString::fromUtf8(line);
        }
        return program;
    }
    // Runs Python lines with `w`, a client of the copy serving `name`; the
    // script's standard output.
    QString client(const QString& name, const QString& script) {
        QProcess python;
        python.setProcessEnvironment(environment());
        python.start("/usr/bin/python3",
                     {"-c", "from wibbleton import Wibbleton_Class\nw = Wibbleton_Class('" + name +
                                "', 'T')\n" + script});
        EXPECT_TRUE(python.waitForFinished(20000));
        EXPECT_EQ(python.exitCode(), 0) << python.readAllStandardError().toStdString();
        return QString::fromUtf8(python.readAllStandardOutput()).trimmed();
    }
    static bool Asked(const QStringList& lines) {
        for (const QString& line : lines) {
            if (line.startsWith(kRecoverLine)) {
                return true;
            }
        }
        return false;
    }
    QStringList snapshots(const QString& sub = {}) const {
        return QDir(home.path() + "/data/Wibbleton/Wibbleton/recovery" + sub)
            .entryList({"*.snap"}, QDir::Files);
    }
    QTemporaryDir home;
};

TEST_F(RecoveryRun, WorkOfAKilledProgramIsOfferedToTheNextAndNeverToACopyBesideIt) {
    QStringList lines;
    auto painter = start("wib-recovery-a", "second", lines);
    client("wib-recovery-a", "w.Wib_SetRGB(3, 4, 10, 20, 30)\nw.Wib_RunCommand('file.autosave')");
    EXPECT_EQ(snapshots().size(), 1);

    QStringList besideLines;
    auto beside = start("wib-recovery-b", "first", besideLines);
    EXPECT_FALSE(Asked(besideLines)) << "the painter is still running";
    ::kill(static_cast<pid_t>(beside->processId()), SIGTERM);
    ASSERT_TRUE(beside->waitForFinished(20000));

    ::kill(static_cast<pid_t>(painter->processId()), SIGKILL);
    ASSERT_TRUE(painter->waitForFinished(20000));

    QStringList again;
    auto restored = start("wib-recovery-c", "first", again);
    EXPECT_TRUE(again.contains(kRecoverLine + "1"));
    EXPECT_EQ(client("wib-recovery-c", "print(w.Wib_GetR(3, 4), w.Wib_GetB(3, 4))"), "10 30");

    // A signal keeps the (still unsaved) work for the next start.
    ::kill(static_cast<pid_t>(restored->processId()), SIGTERM);
    ASSERT_TRUE(restored->waitForFinished(20000));
    EXPECT_EQ(restored->exitCode(), 0);
    EXPECT_FALSE(snapshots().isEmpty());

    QStringList declined;
    auto last = start("wib-recovery-d", "second", declined);
    EXPECT_TRUE(declined.contains(kRecoverLine + "2"));
    EXPECT_EQ(client("wib-recovery-d", "print(w.Wib_GetR(3, 4))"), "255");
    EXPECT_FALSE(snapshots("/old").isEmpty()) << "declined work is kept aside";
    ::kill(static_cast<pid_t>(last->processId()), SIGTERM);
    ASSERT_TRUE(last->waitForFinished(20000));
    EXPECT_TRUE(snapshots().isEmpty());
}

}  // namespace
