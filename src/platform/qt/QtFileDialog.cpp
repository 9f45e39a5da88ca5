// SPDX-License-Identifier: MIT
#include "platform/qt/QtFileDialog.h"

#include "platform/qt/QtForm.h"
#include "platform/qt/QtMessageBox.h"
#include "platform/qt/QtText.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QStringList>

namespace KestrinProductEditor {

namespace {

/// "Name (*.csv)|*.csv|..." as Qt has it: one entry for each pair, "Name (*.csv)".
[[nodiscard]] QStringList NameFilters(const QString& filter)
{
    const QStringList parts = filter.split(u'|');
    QStringList filters;
    for (qsizetype at = 0; at + 1 < parts.size(); at += 2) {
        QString name = parts[at];
        // The name repeats its pattern for dialogs that would not show it.
        const qsizetype bracket = name.lastIndexOf(u'(');
        if (bracket > 0 && name.trimmed().endsWith(u')'))
            name.truncate(bracket);
        QStringList patterns = parts[at + 1].split(u';', Qt::SkipEmptyParts);
        // There, names without a point count as well.
        patterns.replaceInStrings(QStringLiteral("*.*"), QStringLiteral("*"));
        filters.append(QStringLiteral("%1 (%2)").arg(name.trimmed(), patterns.join(u' ')));
    }
    return filters;
}

void Begin(QFileDialog& dialog, const QString& start)
{
    static QString lastFolder;
    QObject::connect(&dialog, &QFileDialog::directoryEntered, &dialog,
                     [](const QString& folder) { lastFolder = folder; });
    QObject::connect(&dialog, &QFileDialog::fileSelected, &dialog,
                     [](const QString& path) { lastFolder = QFileInfo(path).absolutePath(); });
    const QFileInfo info(start);
    if (start.isEmpty()) {
        if (!lastFolder.isEmpty())
            dialog.setDirectory(lastFolder);
    } else if (info.isDir()) {
        dialog.setDirectory(start);
    } else {
        if (info.absoluteDir().exists())
            dialog.setDirectory(info.absolutePath());
        dialog.selectFile(info.fileName());
    }
}

} // namespace

std::optional<std::u16string> ShowFileDialog(const FileDialog& dialog)
{
    const bool isSave = dialog.kind == FileDialog::Kind::Save;
    QFileDialog box(QtForm::FrontWindow(), ToQt(dialog.title));
    box.setEnabled(true);
    box.setAttribute(Qt::WA_QuitOnClose, false);
    box.setAcceptMode(isSave ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    box.setFileMode(isSave ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    box.setNameFilters(NameFilters(ToQt(dialog.filter)));
    QString extension = ToQt(dialog.defaultExtension);
    if (extension.startsWith(u'.'))
        extension.remove(0, 1);
    box.setDefaultSuffix(extension);
    Begin(box, ToQt(dialog.start));
    while (box.exec() == QDialog::Accepted) {
        const QStringList files = box.selectedFiles();
        if (files.isEmpty() || files.front().isEmpty())
            return std::nullopt;
        if (!isSave || QFileInfo(files.front()).absoluteDir().exists())
            return FromQt(QDir::toNativeSeparators(files.front()));
        QtMessageBox().Show(u"The folder does not exist:\n" + FromQt(QFileInfo(files.front()).absolutePath()),
                            kMessageExclamation, dialog.title);
    }
    return std::nullopt;
}

} // namespace KestrinProductEditor
