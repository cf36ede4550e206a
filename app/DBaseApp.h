#pragma once
#include <app/logic/AppOptions.h>
#include <memory>
#include <tarnwick/FailureLog.h>

namespace app {

class DBase;

/// Starts the program: the main window, then the given or last project with its database and map.
class DBaseApp
{
public:
    explicit DBaseApp(const AppOptions &options);
    ~DBaseApp();
    DBaseApp(const DBaseApp &) = delete;
    DBaseApp &operator=(const DBaseApp &) = delete;

    DBase &window() { return *m_window; }
    /// Shows the window, then opens files or the last project, and queries.
    void start();
    /// Writes the picture of the complete window. Returns false after writing the reason to the standard error stream.
    bool writePicture();

private:
    bool openFiles();
    bool addQueries();

    AppOptions m_options;
    class StreamPrompts;
    std::unique_ptr<StreamPrompts> m_streamPrompts; ///< for pictures, where nobody can answer a message box
    std::unique_ptr<tarnwick::LoggedPrompts> m_logged;
    std::unique_ptr<DBase> m_window;
};

/// Body of main().
int runArvo(int argc, char **argv);

} // namespace app
