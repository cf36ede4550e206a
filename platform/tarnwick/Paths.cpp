#include "Paths.h"

#include "base/Error.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace tarnwick {

using namespace Qt::StringLiterals;

static const QString kInstallationMacro = u"[PALOMINE_DIR]"_s;

/// Creates the missing sub-folders of an installation. Returns those that could not be created.
static QStringList makeFolders(const QString &installation)
{
    QStringList failed;
    for (const QString &folder : {u"config/arvo"_s, u"user/queries"_s, u"user/map_templates"_s, u"user/map_headers"_s,
                                  u"user/display_formats"_s})
        if (!QDir(installation).mkpath(folder))
            failed.append(folder);
    return failed;
}

PathRoots PathRoots::fromEnvironment(const QString &projectDir)
{
    // Called often, perhaps for a folder on a network: done once per installation.
    static QString made;
    PathRoots roots;
    if (!projectDir.isEmpty())
        roots.projectDir = QDir::cleanPath(QDir(projectDir).absolutePath());
    const QString fromEnvironment = qEnvironmentVariable("PALOMINE_DIR");
    if (!fromEnvironment.isEmpty()) {
        roots.palomineDir = QDir::cleanPath(QDir(QDir::fromNativeSeparators(fromEnvironment)).absolutePath());
        // A shared read-only installation is left as it is.
        if (roots.palomineDir != made && QFileInfo(roots.palomineDir).isWritable())
            makeFolders(roots.palomineDir);
    } else {
        roots.palomineDir = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/palomine"_s;
        if (roots.palomineDir != made)
            makeFolders(roots.palomineDir);
    }
    made = roots.palomineDir;
    return roots;
}

void PathRoots::makeInstallationFolders() const
{
    const QStringList failed = makeFolders(palomineDir);
    if (!failed.isEmpty())
        throw FileError(palomineDir, 0, u"the folder %1 cannot be made."_s.arg(failed.first()));
}

static QString withBackslashes(QString text)
{
    return text.replace(u'/', u'\\');
}

static bool isAbsolute(const QString &text)
{
    return text.startsWith(u'\\') || (text.size() >= 3 && text[0].isLetter() && text[1] == u':' && text[2] == u'\\');
}

// The suite's paths come from systems that ignore case in file names: if a part does not exist as written, an existing
// name that differs only in case is used.
static QString resolveBelow(const QString &root, const QString &suiteText)
{
    const QString relative = QDir::cleanPath(QString(suiteText).replace(u'\\', u'/'));
    const QString exact = root.isEmpty() ? relative : QDir::cleanPath(root + u'/' + relative);
    if (root.isEmpty() || QFileInfo::exists(exact))
        return exact;

    QString path = root;
    for (const QString &part : relative.split(u'/', Qt::SkipEmptyParts)) {
        QString name = part;
        if (part != u".."_s && !QFileInfo::exists(path + u'/' + part)) {
            const QStringList names = QDir(path).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
            for (const QString &other : names) {
                if (other.compare(part, Qt::CaseInsensitive) == 0) {
                    name = other;
                    break;
                }
            }
        }
        path += u'/' + name;
    }
    return QDir::cleanPath(path);
}

static QString resolve(const QString &text, const QString &relativeRoot, const PathRoots &roots)
{
    if (text.isEmpty())
        return {};
    if (text.startsWith(kInstallationMacro, Qt::CaseInsensitive))
        return resolveBelow(roots.palomineDir, text.mid(kInstallationMacro.size()));
    if (isAbsolute(text))
        return QDir::cleanPath(QString(text).replace(u'\\', u'/'));
    return resolveBelow(relativeRoot, text);
}

SuitePath::SuitePath(const QString &text)
    : m_text(withBackslashes(text))
{
}

SuitePath SuitePath::fromMachine(const QString &machinePath, const PathRoots &roots)
{
    if (machinePath.isEmpty())
        return {};
    const QString path = QDir::cleanPath(QFileInfo(machinePath).absoluteFilePath());
    const auto below = [&path](const QString &root) -> QString {
        if (root.isEmpty())
            return {};
        const QString folder = QDir::cleanPath(root) + u'/';
        return path.startsWith(folder) ? path.mid(folder.size()) : QString();
    };
    if (const QString inProject = below(roots.projectDir); !inProject.isEmpty())
        return SuitePath(inProject);
    if (const QString inInstallation = below(roots.palomineDir); !inInstallation.isEmpty())
        return SuitePath(kInstallationMacro + u'/' + inInstallation);
    return SuitePath(path);
}

QString SuitePath::machinePath(const PathRoots &roots) const
{
    return resolve(m_text, roots.projectDir, roots);
}

QString SuitePath::installationPath(const PathRoots &roots) const
{
    return resolve(m_text, roots.palomineDir, roots);
}

QString SuitePath::fileName() const
{
    return m_text.mid(m_text.lastIndexOf(u'\\') + 1);
}

QString SuitePath::extension() const
{
    const QString name = fileName();
    const qsizetype dot = name.lastIndexOf(u'.');
    return dot < 0 ? QString() : name.mid(dot);
}

QString SuitePath::baseName() const
{
    const QString name = fileName();
    return name.left(name.size() - extension().size());
}

QString SuitePath::folder() const
{
    const qsizetype separator = m_text.lastIndexOf(u'\\');
    return separator < 0 ? QString() : m_text.left(separator);
}

static QStringView withoutHere(QStringView text)
{
    while (text.startsWith(u".\\"))
        text = text.sliced(2);
    return text;
}

static qsizetype lengthOfLeading(const QString &text, const QString &folder)
{
    const QString given = withBackslashes(folder);
    const QStringView own = withoutHere(text);
    QStringView wanted = withoutHere(given);
    while (wanted.endsWith(u'\\'))
        wanted.chop(1);
    if (wanted.isEmpty() || own.size() <= wanted.size() || own[wanted.size()] != u'\\')
        return 0;
    if (!own.startsWith(wanted, Qt::CaseInsensitive))
        return 0;
    return text.size() - own.size() + wanted.size() + 1;
}

QString SuitePath::relativeTo(const QString &folder) const
{
    return m_text.mid(lengthOfLeading(m_text, folder));
}

bool SuitePath::isBelow(const QString &folder) const
{
    return lengthOfLeading(m_text, folder) > 0;
}

QString SuitePath::shown(const QString &folder) const
{
    return isAbsolute(m_text) ? QDir::toNativeSeparators(QString(m_text).replace(u'\\', u'/')) : relativeTo(folder);
}

SuitePath SuitePath::withExtension(const QString &extensionWithDot) const
{
    return SuitePath(m_text.left(m_text.size() - extension().size()) + extensionWithDot);
}

QString validFileName(const QString &text)
{
    static const QString forbidden = u"<>:\"/\\|?*"_s;
    static const QStringList reserved = {u"con"_s, u"prn"_s, u"aux"_s, u"nul"_s};

    QString name = text.trimmed();
    for (QChar &c : name) {
        if (c.unicode() < 0x20 || c.unicode() == 0x7f || forbidden.contains(c))
            c = u'_';
    }
    // Some systems drop a trailing dot or blank, so two names could denote the same file.
    for (qsizetype i = name.size() - 1; i >= 0 && (name[i] == u'.' || name[i] == u' '); --i)
        name[i] = u'_';
    const QString base = name.section(u'.', 0, 0).toLower();
    const bool isDevice = reserved.contains(base) || (base.size() == 4 && base[3].isDigit() &&
                                                      (base.startsWith(u"com"_s) || base.startsWith(u"lpt"_s)));
    if (isDevice)
        name.prepend(u'_');
    return name.isEmpty() ? u"_"_s : name;
}

} // namespace tarnwick
