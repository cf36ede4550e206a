#include "HeaderEditor.h"

#include "AskToSave.h"
#include "Messages.h"
#include "SystemMacros.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;
using tarnwick::Answer;
using tarnwick::Buttons;

namespace app {

HeaderEditor::HeaderEditor(MapDocument &map, plans::MapHost &host, FileChoice &choice, const tarnwick::PathRoots &roots)
    : header(map.header)
    , description(map.description)
    , m_map(map)
    , m_host(host)
    , m_choice(choice)
    , m_roots(roots)
{
    noteKept();
}

static MapHeader withoutSignatures(MapHeader header)
{
    header.clearSignatures();
    return header;
}

void HeaderEditor::noteKept()
{
    m_kept = withoutSignatures(header);
}

bool HeaderEditor::mayReplaceTexts()
{
    if (withoutSignatures(header) == m_kept)
        return true;
    return saveOrLetGo(m_host.prompts(), messages::kAskSaveChanges, [this] { return save(); });
}

bool HeaderEditor::isModified() const
{
    return !(header == m_map.header) || description != m_map.description;
}

QString HeaderEditor::title() const
{
    return tarnwick::format(u"Map Header - %S%c", header.name, QChar(isModified() ? u'*' : u' '));
}

tarnwick::JMacro HeaderEditor::macros() const
{
    return printMacros(m_host.systemMacros(), m_host.userMacros());
}

QStringList HeaderEditor::unknownKeywords() const
{
    QStringList words;
    for (const QString &text : {header.upperText, header.lowerText, header.preparedBy, header.checkedBy}) {
        for (const tarnwick::JMacro::Span &span : macros().unknownNames(text))
            words.append(text.mid(span.start, span.length));
    }
    words.removeDuplicates();
    return words;
}

QString HeaderEditor::suiteText(const QString &machinePath) const
{
    return tarnwick::SuitePath::fromMachine(machinePath, m_roots).text();
}

bool HeaderEditor::read(const QString &machinePath, MapHeader &result)
{
    try {
        MapHeader loaded = readHeaderFile(machinePath);
        loaded.preparedBy = header.preparedBy;
        loaded.checkedBy = header.checkedBy;
        result = loaded;
        return true;
    } catch (const tarnwick::Error &error) {
        messages::errorWithReason(m_host.prompts(), messages::kLoadHeaderFailed, error);
        return false;
    }
}

bool HeaderEditor::write(const QString &machinePath)
{
    try {
        writeHeaderFile(header, machinePath);
        return true;
    } catch (const tarnwick::Error &error) {
        messages::errorWithReason(m_host.prompts(), messages::kStoreHeaderFailed, error);
        return false;
    }
}

bool HeaderEditor::mayReplace(const QString &machinePath)
{
    return !QFileInfo::exists(machinePath) ||
           m_host.prompts().question(Buttons::NoYes, messages::kAskReplaceFile, suiteText(machinePath)) == Answer::Yes;
}

bool HeaderEditor::open()
{
    if (!mayReplaceTexts())
        return false;
    const QString path = m_choice.openFile(kHeaderChooser, u"Open Map Header"_s, m_roots);
    if (path.isEmpty() || !read(path, header))
        return false;
    noteKept();
    m_path = path;
    m_host.prompts().status(messages::kOpenedHeader, suiteText(path));
    return true;
}

bool HeaderEditor::save()
{
    QString path = m_path;
    if (path.isEmpty() && !header.name.isEmpty()) {
        path = tarnwick::SuitePath(u"map_headers\\"_s + tarnwick::validFileName(header.name) + u".hdr"_s)
                   .machinePath(m_roots);
        // The name came with the map; the file of that name may hold something else.
        if (!mayReplace(path))
            return false;
    }
    if (path.isEmpty())
        return saveAs();
    if (!write(path))
        return false;
    noteKept();
    m_path = path;
    m_host.prompts().status(messages::kStoredHeader, suiteText(path));
    return true;
}

bool HeaderEditor::saveAs()
{
    const QString name = header.name.isEmpty() ? QString() : QString(header.name + u".hdr"_s);
    const QString path = m_choice.saveFile(kHeaderChooser, u"Save Map Header As"_s, m_roots, name);
    if (path.isEmpty() || !write(path))
        return false;
    m_path = path;
    header.name = QFileInfo(path).completeBaseName();
    noteKept();
    m_host.prompts().status(messages::kStoredHeader, suiteText(path));
    return true;
}

bool HeaderEditor::importHeader()
{
    if (!mayReplaceTexts())
        return false;
    const QString from = m_choice.openFile(kHeaderTemplateChooser, u"Import From User"_s, m_roots);
    MapHeader imported;
    if (from.isEmpty() || !read(from, imported))
        return false;
    const QString to = tarnwick::SuitePath(u"map_headers\\"_s + QFileInfo(from).fileName()).machinePath(m_roots);
    if (QFileInfo(from) != QFileInfo(to)) {
        if (!mayReplace(to))
            return false;
        std::swap(header, imported);
        if (!write(to)) {
            std::swap(header, imported);
            return false;
        }
    } else {
        header = imported;
    }
    noteKept();
    m_path = to;
    m_host.prompts().status(messages::kImported, suiteText(to));
    return true;
}

void HeaderEditor::exportHeader()
{
    const QString name = header.name.isEmpty() ? QString() : QString(header.name + u".hdr"_s);
    const QString path = m_choice.saveFile(kHeaderTemplateChooser, u"Export To User As"_s, m_roots, name);
    if (!path.isEmpty() && write(path))
        m_host.prompts().status(messages::kExported, suiteText(path));
}

void HeaderEditor::setMapHeader()
{
    m_host.undoCheckpoint(u"Set Map Header"_s);
    m_map.header = header;
    noteKept();
    m_map.description = description;
    m_host.prompts().status(messages::kSetHeader);
}

bool HeaderEditor::mayClose()
{
    if (!isModified()) {
        m_host.prompts().status(messages::kHeaderUnchanged);
        return true;
    }
    switch (m_host.prompts().question(Buttons::YesNoCancel, messages::kAskSaveChanges)) {
    case Answer::Yes:
        setMapHeader();
        return true;
    case Answer::No:
        m_host.prompts().status(messages::kHeaderUnchanged);
        return true;
    default:
        return false;
    }
}

} // namespace app
