#pragma once
#include <QSize>
#include <QStringList>
#include <tarnwick/ProgramManual.h>

namespace app {

/// The program's command line.
struct AppOptions
{
    QStringList files;   ///< to open at the start: a project's folder, files of a project; see FileOpener
    QStringList queries; ///< query files whose tubes are marked at the start
    QString picture;     ///< file for a picture of the window; the program writes it and ends
    QSize size{1280, 800};
    double scale = 1;  ///< device pixels per pixel of the picture
    bool dark = false; ///< dark palette, independent of the settings

    /// Error in the arguments; empty if there is none.
    QString error;
    /// Text that was asked for in place of the window: help or version; empty otherwise.
    QString answer;
    /// arguments: those after the program's name.
    static AppOptions parse(const QStringList &arguments);
};

/// Description of the program arvo for help, manual page and completion.
tarnwick::ProgramManual arvoManual();

} // namespace app
