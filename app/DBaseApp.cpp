#include "DBaseApp.h"

#include "CheckStyle.h"
#include "DBase.h"
#include "LineIcon.h"

#include <app/logic/Messages.h>
#include <app/logic/StartUp.h>

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

const QString kUsage = u"usage: arvo [PROJECT] [--query FILE.qry]... [--dark] [--picture FILE.png [--size WxH] "
                       u"[--scale N]]"_s;

bool parseSize(const QString &text, QSize &size)
{
    const QStringList parts = text.split(u'x');
    bool wideOk = false;
    bool highOk = false;
    size = QSize(parts.value(0).toInt(&wideOk), parts.value(1).toInt(&highOk));
    constexpr int kMost = 10'000;
    return parts.size() == 2 && wideOk && highOk && size.width() > 0 && size.height() > 0 && size.width() <= kMost &&
           size.height() <= kMost;
}

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

AppOptions AppOptions::parse(const QStringList &arguments)
{
    AppOptions options;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString &argument = arguments[i];
        const bool takesValue = argument == u"--query"_s || argument == u"--picture"_s || argument == u"--size"_s ||
                                argument == u"--scale"_s;
        if (takesValue && i + 1 == arguments.size()) {
            options.error = u"%1 needs a value"_s.arg(argument);
            return options;
        }
        bool ok = true;
        if (argument == u"--query"_s)
            options.queries.append(arguments[++i]);
        else if (argument == u"--picture"_s)
            options.picture = arguments[++i];
        else if (argument == u"--size"_s)
            ok = parseSize(arguments[++i], options.size);
        else if (argument == u"--scale"_s)
            ok = (options.scale = arguments[++i].toDouble(&ok)) > 0 && ok && options.scale <= 8;
        else if (argument == u"--dark"_s)
            options.dark = true;
        else if (argument.startsWith(u"--"_s))
            options.error = u"unknown option %1"_s.arg(argument);
        else if (options.project.isEmpty())
            options.project = argument;
        else
            options.error = u"more than one project is named"_s;
        if (!ok)
            options.error = u"%1 is no value for %2"_s.arg(arguments[i], argument);
        if (!options.error.isEmpty())
            return options;
    }
    return options;
}

DBaseApp::DBaseApp(const AppOptions &options)
    : m_options(options)
    , m_streamPrompts(options.picture.isEmpty() ? nullptr : std::make_unique<StreamPrompts>())
    , m_window(std::make_unique<DBase>(m_streamPrompts.get()))
{
    // A picture shows the initial layout, not the layout stored by the user.
    if (options.picture.isEmpty())
        tarnwick::StateKeeper::keep(m_window.get());
    else
        m_window->projectSession().keepsRecentFiles = false;
}

DBaseApp::~DBaseApp() = default;

bool DBaseApp::openProject()
{
    const QString folder = chooseProject(m_options.project, m_window->projectSession().recentProjects());
    if (m_options.project.isEmpty() && !brannock::Project::isProjectFolder(folder)) {
        // If the last project was moved, no error is shown at the start.
        if (!folder.isEmpty())
            m_window->projectSession().prompts().status(messages::kRecentNotThere, folder);
        return true;
    }
    return m_window->openProject(folder);
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
    m_window->show();
    // In the event loop, so that errors about the project are shown over a visible window.
    QMetaObject::invokeMethod(
        m_window.get(),
        [this] {
            m_window->runner().perform([this] {
                if (openProject())
                    addQueries();
            });
        },
        Qt::QueuedConnection);
}

bool DBaseApp::writePicture()
{
    m_window->resize(m_options.size);
    bool shown = false;
    m_window->runner().perform([this, &shown] { shown = openProject() && addQueries(); });
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

void useDarkPalette()
{
    QApplication::setStyle(new CheckStyle);
    const QColor window(0x2b, 0x2d, 0x30);
    const QColor base(0x1e, 0x1f, 0x22);
    const QColor text(0xdf, 0xe1, 0xe5);
    const QColor faint(0x7f, 0x83, 0x8b);
    QPalette palette(QColor(0x3c, 0x3f, 0x43), window);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, QColor(0x25, 0x27, 0x2a));
    palette.setColor(QPalette::ToolTipBase, QColor(0x3c, 0x3f, 0x43));
    palette.setColor(QPalette::PlaceholderText, faint);
    palette.setColor(QPalette::Highlight, QColor(0x2f, 0x65, 0xca));
    palette.setColor(QPalette::Link, QColor(0x6c, 0xa8, 0xff));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText,
                            QPalette::HighlightedText, QPalette::BrightText}) {
        palette.setColor(role, text);
        palette.setColor(QPalette::Disabled, role, QColor(0x6f, 0x73, 0x7a));
    }
    QApplication::setPalette(palette);
}

int runArvo(int argc, char **argv)
{
    tarnwick::makeFileSizeLimitAnError();
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    const AppOptions options = AppOptions::parse(arguments);
    if (!options.error.isEmpty()) {
        say(u"arvo: "_s + options.error + u'\n' + kUsage);
        return kWrongUsage;
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
