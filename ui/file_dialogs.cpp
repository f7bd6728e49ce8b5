// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/file_dialogs.h"

#include <QFileDialog>
#include <QInputDialog>

#include "core/host/prompter.h"
#include "fileio/file_filters.h"
#include "fileio/file_messages.h"
#include "ui/targa_options.h"

namespace wib {

namespace {

QString QtEntry(const FilterEntry& entry) {
    const QString caption = QString::fromStdString(entry.caption);
    const QString pattern = QString::fromStdString(entry.pattern);
    return caption.endsWith('(' + pattern + ')') ? caption : caption + " (" + pattern + ')';
}

// The entry of `filter` that Qt's dialog reports as chosen.
FilterEntry ChosenEntry(const std::string& filter, const QString& chosen) {
    const auto entries = ParseFilter(filter);
    for (const FilterEntry& entry : entries) {
        if (QtEntry(entry) == chosen) {
            return entry;
        }
    }
    return entries.front();
}

}  // namespace

QString QtFilter(const std::string& filter) {
    QStringList entries;
    for (const FilterEntry& entry : ParseFilter(filter)) {
        entries << QtEntry(entry);
    }
    return entries.join(QStringLiteral(";;"));
}

bool AskOpenValues(QWidget* parent, const std::string& startPath,
                   std::map<std::string, ParamValue>& values) {
    QString chosen;
    const QString path = QFileDialog::getOpenFileName(parent, QString::fromLatin1(kOpenDialogTitle),
                                                      QString::fromStdString(startPath),
                                                      QtFilter(kOpenFilter), &chosen);
    if (path.isEmpty()) {
        return false;
    }
    const bool targa = ChosenEntry(kOpenFilter, chosen).extension == ".tga";
    values["path"] = path.toStdString();
    values["type"] = std::string(targa ? kOpenTypeTarga : kOpenTypeAuto);
    return true;
}

bool AskSaveValues(QWidget* parent, Prompter& prompter, const std::string& startPath,
                   std::map<std::string, ParamValue>& values) {
    QString chosen;
    const QString path = QFileDialog::getSaveFileName(parent, QString::fromLatin1(kSaveDialogTitle),
                                                      QString::fromStdString(startPath),
                                                      QtFilter(kSaveFilter), &chosen);
    if (path.isEmpty()) {
        return false;
    }
    const FilterEntry type = ChosenEntry(kSaveFilter, chosen);
    values["path"] = path.toStdString();
    values["type"] = type.name;
    if (type.name == kSaveTypeDefaultTarga) {
        TargaOptions options(parent);
        if (!options.ask()) {
            return false;
        }
        values["targa_format"] = static_cast<long long>(options.TargaFormatChoice);
    } else if (type.name == kSaveTypeJpg) {
        bool ok = false;
        const int quality = QInputDialog::getInt(
            parent, QStringLiteral("Quality"), QStringLiteral("Jpeg quality"), 90, 1, 100, 1, &ok);
        if (!ok) {
            prompter.message(kSaveCanceled);
            return false;
        }
        values["quality"] = static_cast<long long>(quality);
    }
    return true;
}

}  // namespace wib
