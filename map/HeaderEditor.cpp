#include "HeaderEditor.h"

#include "FileChoosers.h"
#include "Messages.h"

#include <QFileInfo>
#include <tarnwick/AskToSave.h>
#include <tarnwick/Failures.h>

using namespace Qt::StringLiterals;
using tarnwick::Answer;
using tarnwick::Buttons;

namespace map {

HeaderEditor::HeaderEditor(const Context &context)
    : header(context.map.header())
    , description(context.map.description())
    , m_context(context)
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
    return tarnwick::saveOrDiscard(m_context.prompts, messages::kAskSaveChanges, [this] { return save(); });
}

bool HeaderEditor::isModified() const
{
    return !(header == m_context.map.header()) || description != m_context.map.description();
}

QString HeaderEditor::title() const
{
    return tarnwick::format(u"Map Header - %S%c", header.name, QChar(isModified() ? u'*' : u' '));
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
    return tarnwick::SuitePath::fromMachine(machinePath, m_context.roots).text();
}

bool HeaderEditor::read(const QString &machinePath, MapHeader &result)
{
    const auto load = [&] {
        MapHeader loaded = readHeaderFile(machinePath);
        loaded.preparedBy = header.preparedBy;
        loaded.checkedBy = header.checkedBy;
        result = loaded;
    };
    return tarnwick::attempt(m_context.prompts, load, messages::kLoadHeaderFailed);
}

bool HeaderEditor::write(const QString &machinePath)
{
    const auto store = [&] { writeHeaderFile(header, machinePath); };
    return tarnwick::attempt(m_context.prompts, store, messages::kStoreHeaderFailed);
}

bool HeaderEditor::mayReplace(const QString &machinePath)
{
    return !QFileInfo::exists(machinePath) ||
           m_context.prompts.question(Buttons::NoYes, messages::kAskReplaceFile, suiteText(machinePath)) == Answer::Yes;
}

bool HeaderEditor::open()
{
    if (!mayReplaceTexts())
        return false;
    const QString path = m_context.choice.openFile(kHeaderChooser, u"Open Map Header"_s, m_context.roots);
    if (path.isEmpty() || !read(path, header))
        return false;
    noteKept();
    m_path = path;
    m_context.prompts.status(messages::kOpenedHeader, suiteText(path));
    return true;
}

bool HeaderEditor::save()
{
    QString path = m_path;
    if (path.isEmpty() && !header.name.isEmpty()) {
        path = tarnwick::SuitePath(u"map_headers\\"_s + tarnwick::validFileName(header.name) + u".hdr"_s)
                   .machinePath(m_context.roots);
        // The name is that of the map; a file with this name can hold another header.
        if (!mayReplace(path))
            return false;
    }
    if (path.isEmpty())
        return saveAs();
    if (!write(path))
        return false;
    noteKept();
    m_path = path;
    m_context.prompts.status(messages::kStoredHeader, suiteText(path));
    return true;
}

bool HeaderEditor::saveAs()
{
    const QString name = header.name.isEmpty() ? QString() : QString(header.name + u".hdr"_s);
    const QString path = m_context.choice.saveFile(kHeaderChooser, u"Save Map Header As"_s, m_context.roots, name);
    if (path.isEmpty() || !write(path))
        return false;
    m_path = path;
    header.name = QFileInfo(path).completeBaseName();
    noteKept();
    m_context.prompts.status(messages::kStoredHeader, suiteText(path));
    return true;
}

bool HeaderEditor::importHeader()
{
    if (!mayReplaceTexts())
        return false;
    const QString from = m_context.choice.openFile(kHeaderTemplateChooser, u"Import From User"_s, m_context.roots);
    MapHeader imported;
    if (from.isEmpty() || !read(from, imported))
        return false;
    const QString to =
        tarnwick::SuitePath(u"map_headers\\"_s + QFileInfo(from).fileName()).machinePath(m_context.roots);
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
    m_context.prompts.status(messages::kImported, suiteText(to));
    return true;
}

void HeaderEditor::exportHeader()
{
    const QString name = header.name.isEmpty() ? QString() : QString(header.name + u".hdr"_s);
    const QString path =
        m_context.choice.saveFile(kHeaderTemplateChooser, u"Export To User As"_s, m_context.roots, name);
    if (!path.isEmpty() && write(path))
        m_context.prompts.status(messages::kExported, suiteText(path));
}

void HeaderEditor::setMapHeader()
{
    m_context.map.change(u"Set Map Header"_s, [this](MapEdit &edit) {
        edit.setHeader(header);
        edit.setDescription(description);
    });
    noteKept();
    m_context.prompts.status(messages::kSetHeader);
}

bool HeaderEditor::mayClose()
{
    if (!isModified()) {
        m_context.prompts.status(messages::kHeaderUnchanged);
        return true;
    }
    switch (m_context.prompts.question(Buttons::YesNoCancel, messages::kAskSaveChanges)) {
    case Answer::Yes:
        setMapHeader();
        return true;
    case Answer::No:
        m_context.prompts.status(messages::kHeaderUnchanged);
        return true;
    default:
        return false;
    }
}

} // namespace map
