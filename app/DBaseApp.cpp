#include "DBaseApp.h"

#include "CheckStyle.h"
#include "DBase.h"
#include "LineIcon.h"
#include "Look.h"

#include <app/logic/FileKinds.h>
#include <app/logic/Messages.h>

#include <tarnwick/FileWriter.h>
#include <tarnwick/gui/StateKeeper.h>
#include <tarnwick/TerminalText.h>

#include <QApplication>
#include <QBuffer>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QPalette>
#include <QPixmap>
#include <QStyle>

using namespace Qt::StringLiterals;

namespace app {

namespace {

constexpr int kWrongUsage = 2;

void say(const QString &text)
{
    fprintf(stderr, "%s\n", qUtf8Printable(tarnwick::terminalText(text)));
}

QtMessageHandler usualHandler = nullptr;

/// Suppresses a warning of the platform plugin, which appears for each window without a display and has no meaning for
/// users.
void dropPlatformNote(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (text != u"This plugin does not support propagateSizeHints()"_s)
        usualHandler(type, context, text);
}

} // namespace

/// Writes errors to the standard error stream and answers questions so that most is shown.
class DBaseApp::StreamPrompts : public tarnwick::UserPrompts
{
public:
    void showError(int, int number, const QString &text) override
    {
        say(number == 0 ? text : u"[%1] %2"_s.arg(QString::number(number), text));
    }
    void showInformation(const QString &text) override { say(text); }
    tarnwick::Answer ask(tarnwick::Buttons buttons, const QString &text, int) override
    {
        say(text);
        return buttons == tarnwick::Buttons::OkCancel ? tarnwick::Answer::Ok : tarnwick::declined(buttons);
    }
    void showStatus(const QString &) override {}
};

DBaseApp::DBaseApp(const AppOptions &options)
    : m_options(options)
    , m_streamPrompts(options.picture.isEmpty() ? nullptr : std::make_unique<StreamPrompts>())
    , m_logged(m_streamPrompts ? std::make_unique<tarnwick::LoggedPrompts>(*m_streamPrompts, u"arvo"_s) : nullptr)
    , m_window(std::make_unique<DBase>(m_logged.get()))
{
    // A picture shows the initial layout, not the layout stored by the user.
    if (options.picture.isEmpty())
        tarnwick::StateKeeper::keep(m_window.get());
    else
        m_window->projectSession().keepsRecentFiles = false;
}

DBaseApp::~DBaseApp() = default;

bool DBaseApp::openFiles()
{
    for (const QString &file : std::as_const(m_options.files)) {
        const FileKind kind = fileKind(file);
        const bool isInWindow = kind == FileKind::Project || kind == FileKind::Map || kind == FileKind::Database;
        if (!m_options.picture.isEmpty() && QFileInfo::exists(file) && !isInWindow) {
            say(u"\"%1\" opens a dialog, which is not in the picture of the window."_s.arg(file));
            return false;
        }
    }
    if (!m_options.files.isEmpty())
        return m_window->openFiles(m_options.files);
    const QString folder = m_window->projectSession().recentProjects().value(0);
    if (brannock::Project::isProjectFolder(folder))
        return m_window->openProject(folder);
    // If the last project was moved, no error box is shown at the start.
    if (!folder.isEmpty())
        m_window->projectSession().prompts().status(messages::kRecentNotThere, folder);
    return true;
}

bool DBaseApp::addQueries()
{
    bool all = true;
    for (const QString &query : std::as_const(m_options.queries))
        all = m_window->addQueryFile(query) && all;
    return all;
}

void DBaseApp::start()
{
    m_window->projectSession().keepsRecoveryCopies = true;
    if (!m_options.dark)
        m_window->look().restore();
    m_window->show();
    // In the event loop, so that errors about the project are shown over a visible window.
    QMetaObject::invokeMethod(
        m_window.get(),
        [this] {
            m_window->runner().perform([this] {
                if (openFiles())
                    addQueries();
            });
        },
        Qt::QueuedConnection);
}

bool DBaseApp::writePicture()
{
    m_window->resize(m_options.size);
    bool shown = false;
    m_window->runner().perform([this, &shown] { shown = openFiles() && addQueries(); });
    if (!shown)
        return false;
    m_window->show();
    m_window->refreshAll();
    QCoreApplication::processEvents();
    QCoreApplication::processEvents(); // layouts that depend on the first pass
    QByteArray picture;
    QBuffer buffer(&picture);
    buffer.open(QIODevice::WriteOnly);
    m_window->grab().save(&buffer, QFileInfo(m_options.picture).suffix().toLatin1().constData());
    try {
        if (picture.isEmpty())
            throw tarnwick::FileError(m_options.picture, 0,
                                      u"cannot be written: its ending names no kind of picture."_s);
        tarnwick::writeFileAtomically(m_options.picture, picture);
        return true;
    } catch (const tarnwick::FileError &error) {
        say(error.text());
        return false;
    }
}

int runArvo(int argc, char **argv)
{
    tarnwick::makeFileSizeLimitAnError();
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    const AppOptions options = AppOptions::parse(arguments);
    if (!options.error.isEmpty()) {
        say(u"arvo: "_s + options.error);
        return kWrongUsage;
    }
    if (!options.answer.isEmpty()) {
        fputs(qUtf8Printable(options.answer), stdout);
        return 0;
    }
    // Settings that must be made before the application object is created.
    if (!options.picture.isEmpty()) {
        usualHandler = qInstallMessageHandler(dropPlatformNote);
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        if (options.scale != 1)
            qputenv("QT_SCALE_FACTOR", QByteArray::number(options.scale));
    }
    QApplication application(argc, argv);
    QCoreApplication::setApplicationName(u"ARVO"_s);
    QCoreApplication::setOrganizationName(u"Palomine"_s);
    QGuiApplication::setDesktopFileName(u"org.palomine.arvo"_s); // by which Wayland finds the icon
    QApplication::setWindowIcon(programIcon());
    if (options.dark)
        useDarkPalette();
    else if (!options.picture.isEmpty() || QApplication::style()->name() == u"fusion"_s)
        QApplication::setStyle(new CheckStyle);
    DBaseApp app(options);
    if (!options.picture.isEmpty())
        return app.writePicture() ? 0 : 1;
    app.start();
    return QApplication::exec();
}

} // namespace app
