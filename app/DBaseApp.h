#pragma once
#include <memory>
#include <QSize>
#include <QString>
#include <QStringList>

namespace app {

class DBase;

/// The program's command line: arvo [PROJECT] [--query FILE.qry]... [--dark] [--picture FILE.png [--size WxH] [--scale
/// N]]
struct AppOptions
{
    QString project;     ///< folder, or empty for the project opened last
    QStringList queries; ///< query files whose tubes are marked at the start
    QString picture;     ///< file for a picture of the window; the program writes it and ends
    QSize size{1280, 800};
    double scale = 1;  ///< device pixels per pixel of the picture
    bool dark = false; ///< dark palette, independent of the system

    /// Error in the arguments; empty if there is none.
    QString error;
    static AppOptions parse(const QStringList &arguments);
};

/// Starts the program: the main window, then the given or last project with its database and map.
class DBaseApp
{
public:
    explicit DBaseApp(const AppOptions &options);
    ~DBaseApp();
    DBaseApp(const DBaseApp &) = delete;
    DBaseApp &operator=(const DBaseApp &) = delete;

    DBase &window() { return *m_window; }
    /// Shows the window, then opens project and queries.
    void start();
    /// Writes the picture of the complete window. Returns false after writing the reason to the standard error stream.
    bool writePicture();

private:
    bool openProject();
    bool addQueries();

    AppOptions m_options;
    class StreamPrompts;
    std::unique_ptr<StreamPrompts> m_streamPrompts; ///< for pictures, where nobody can answer a message box
    std::unique_ptr<DBase> m_window;
};

/// Sets dark colours for the whole program.
void useDarkPalette();

/// Body of main().
int runArvo(int argc, char **argv);

} // namespace app
