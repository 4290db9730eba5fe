#include "standin/theme.h"
#include "tests/tessimodel/plateprobes.h"

#include <QApplication>
#include <QDir>

#include <cstdlib>
#include <iostream>

// Pictures of the watch plate to look at, for both themes and screens of several densities. By hand:
//
//     TESSI_PLATE_SHOTS=FOLDER watchplate_shots

namespace {

using namespace tests;

// A busy stock's day.
Counts busyDay()
{
    return counts().buys(1284360, 903415, 611203, 284977).sells(1102841, 985530, 702118, 301560).orders(48213, 51877);
}

struct Shot {
    const char* name;
    QSize size;
    Records records;
};

bool write(const QDir& folder, const Shot& shot, standin::Theme theme, double ratio)
{
    standin::setTheme(theme);
    WatchPlate plate;
    plate.resize(shot.size);
    shot.records.size() > 1 ? plate.setRegionTransaction(shot.records) : plate.setTransactionCount(shot.records);
    const QString name = QStringLiteral("plate-%1-%2-%3.png")
                             .arg(shot.name, theme == standin::Theme::Dark ? "dark" : "light")
                             .arg(ratio);
    return pictureOf(plate, ratio).save(folder.filePath(name));
}

} // namespace

int main(int argc, char** argv)
{
    const QString path = qEnvironmentVariable("TESSI_PLATE_SHOTS");
    if (path.isEmpty() || !QDir(path).exists()) {
        std::cerr << "TESSI_PLATE_SHOTS must name a folder for the pictures\n";
        return 2;
    }
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    const QApplication application(argc, argv);
    const Shot shots[] = {{"day", {340, 640}, {busyDay()}},
                          {"wide", {520, 420}, {busyDay()}},
                          {"narrow", {210, 560}, {busyDay()}},
                          {"one", {340, 640}, {oneSectorState().counts}},
                          {"none", {340, 640}, {counts()}},
                          {"empty", {340, 640}, {}},
                          {"negative", {340, 640}, {counts().sells(100, 0, 0, 0), counts().buys(300, 200, 0, 0)}}};
    for (const Shot& shot : shots) {
        for (const standin::Theme theme : {standin::Theme::Dark, standin::Theme::Light}) {
            for (const double ratio : {1.0, 1.5, 2.0}) {
                if (!write(QDir(path), shot, theme, ratio)) {
                    std::cerr << "cannot write into " << path.toStdString() << '\n';
                    return 1;
                }
            }
        }
    }
    return 0;
}
