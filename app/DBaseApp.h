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
    QString picture;     ///< a file for a picture of the window; the program then shows nothing else and ends
    QSize size{1280, 800};
    double scale = 1;  ///< device pixels of one pixel in the picture
    bool dark = false; ///< a dark palette, whatever the system's is

    /// What is wrong with the arguments, empty when nothing is.
    QString error;
    static AppOptions parse(const QStringList &arguments);
};

/// Starts the program: the main window, then the project given or opened last, its database and its map.
class DBaseApp
{
public:
    explicit DBaseApp(const AppOptions &options);
    ~DBaseApp();
    DBaseApp(const DBaseApp &) = delete;
    DBaseApp &operator=(const DBaseApp &) = delete;

    DBase &window() { return *m_window; }
    /// Shows the window, then opens project and queries in it.
    void start();
    /// Writes the picture of the window with everything in it. False, with the reason on the standard error stream.
    bool writePicture();

private:
    bool openProject();
    bool addQueries();

    AppOptions m_options;
    class StreamPrompts;
    std::unique_ptr<StreamPrompts> m_streamPrompts; ///< for pictures: nobody is there to answer a box
    std::unique_ptr<DBase> m_window;
};

/// Dark colours for the whole program.
void useDarkPalette();

/// The whole of main().
int runArvo(int argc, char **argv);

} // namespace app
