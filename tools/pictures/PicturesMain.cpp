// SPDX-License-Identifier: MIT
#include "Scenes.h"

#include "platform/qt/QtToolkit.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLoggingCategory>
#include <QProcess>
#include <QProcessEnvironment>
#include <QStringList>
#include <QTemporaryFile>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <stdexcept>

namespace {

using namespace KestrinProductEditor;

constexpr int kUsage = 2;
// Points; what most desktops begin with.
constexpr int kFontSize = 10;
const QString kRoad = QStringLiteral("--road");
const QString kScale = QStringLiteral("--scale");

/// The same program once more: Qt has one scale in a process. Its screen has room for every window.
[[nodiscard]] int RunAtScale(int percent, const QStringList& arguments)
{
    constexpr int kWidth = 2048;
    constexpr int kHeight = 1280;
    QTemporaryFile screen;
    const QByteArray description =
        QStringLiteral("{\"screens\": [{\"name\": \"0\", \"x\": 0, \"y\": 0, \"width\": %1, \"height\": %2, "
                       "\"logicalDpi\": 96, \"logicalBaseDpi\": 96, \"dpr\": 1}]}")
            .arg(kWidth * percent / 100)
            .arg(kHeight * percent / 100)
            .toUtf8();
    if (!screen.open() || screen.write(description) != description.size() || !screen.flush())
        throw std::runtime_error("no temporary file: " + screen.errorString().toStdString());

    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* const name : {"QT_STYLE_OVERRIDE", "QT_QPA_PLATFORMTHEME", "QT_FONT_DPI",
                                   "QT_SCREEN_SCALE_FACTORS", "QT_ENABLE_HIGHDPI_SCALING"})
        environment.remove(QString::fromLatin1(name));
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"),
                       QStringLiteral("offscreen:configfile=") + screen.fileName());
    environment.insert(QStringLiteral("QT_SCALE_FACTOR"), QString::number(percent / 100.0));
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.start(QCoreApplication::applicationFilePath(),
                  QStringList{kScale, QString::number(percent)} + arguments);
    if (!process.waitForFinished(-1) || process.exitStatus() != QProcess::NormalExit)
        throw std::runtime_error("scale " + std::to_string(percent) + ": " +
                                 process.errorString().toStdString());
    return process.exitCode();
}

/// --scale PERCENT [--road] PRICE-LIST.csv FOLDER
int RenderAll(QStringList arguments)
{
    arguments.removeFirst();
    const int percent = arguments.takeFirst().toInt();
    const bool isRoad = arguments.removeOne(kRoad);
    QFile priceList(arguments.at(0));
    if (!priceList.open(QIODevice::ReadOnly))
        throw std::runtime_error("cannot read " + priceList.fileName().toStdString() + ": " +
                                 priceList.errorString().toStdString());

    QApplication::setStyle(QStringLiteral("Fusion"));
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPointSize(kFontSize);
    QApplication::setFont(font);
    QtToolkit toolkit;
    const ScopedToolkit inUse(toolkit);
    Scenes scenes(priceList.readAll(), QDir(arguments.at(1)).absolutePath());
    if (isRoad)
        scenes.PlayRoad();
    else
        scenes.PlayAll(percent);
    return EXIT_SUCCESS;
}

int Run(int& count, char** values)
{
    if (count > 1 && QString::fromLocal8Bit(values[1]) == kScale) {
        // The off-screen platform complains of everything that needs a screen.
        QLoggingCategory::setFilterRules(QStringLiteral("default.warning=false"));
        const QApplication application(count, values);
        return RenderAll(QApplication::arguments().mid(1));
    }
    const QCoreApplication application(count, values);
    QStringList arguments = QCoreApplication::arguments().mid(1);
    const bool isRoad = arguments.contains(kRoad);
    if (arguments.size() != (isRoad ? 3 : 2)) {
        std::fputs("usage: kstnedit-pictures [--road] PRICE-LIST.csv FOLDER\n", stderr);
        return kUsage;
    }
    const int status = RunAtScale(100, arguments);
    return status != EXIT_SUCCESS || isRoad ? status : RunAtScale(200, arguments);
}

} // namespace

int main(int argc, char** argv)
{
    try {
        return Run(argc, argv);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "kstnedit-pictures: %s\n", failure.what());
    }
    return EXIT_FAILURE;
}
