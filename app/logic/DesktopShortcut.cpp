#include "DesktopShortcut.h"

#include <tarnwick/FileWriter.h>

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

namespace app {

namespace {

/// Quotes an argument of a command line by the rules of the desktop entry format.
QString quoted(const QString &argument)
{
    QString text;
    for (const QChar c : argument) {
        // Escaped once for the argument and once for the value.
        if (c == u'\\')
            text += u"\\\\\\\\"_s;
        else if (c == u'"' || c == u'`' || c == u'$')
            text += u"\\\\"_s + c;
        else
            text += c == u'%' ? u"%%"_s : QString(c);
    }
    return u'"' + text + u'"';
}

} // namespace

QString createDesktopShortcut(const QString &folder, const ShortcutTarget &target)
{
    QDir().mkpath(folder); // the folder of an unused desktop may not exist yet
    const QString path = QDir(folder).filePath(u"ARVO.desktop"_s);
    // A desktop starts programs without the environment variables of the user's shell.
    const QString environment = target.installation.isEmpty()
                                    ? QString()
                                    : QString(u"env "_s + quoted(u"PALOMINE_DIR="_s + target.installation) + u' ');
    const QString icon =
        target.icon.isEmpty() ? QString() : QString(u"\nIcon="_s + QString(target.icon).replace(u'\\', u"\\\\"_s));
    const QString text = u"[Desktop Entry]\nType=Application\nVersion=1.0\nName=ARVO\nComment=Palomine ARVO\nExec="_s +
                         environment + quoted(target.program) + icon +
                         u"\nTerminal=false\nCategories=Science;Engineering;\n"_s;
    tarnwick::writeFileAtomically(path, text.toUtf8());
    QFile::setPermissions(path, QFile::permissions(path) | QFile::ExeOwner);
    return path;
}

} // namespace app
