#include "SqlEditor.h"

#include "CompletionPopup.h"
#include "SqlLexer.h"

#include <QFontDatabase>
#include <QKeyEvent>
#include <QToolTip>

namespace query {

using namespace Qt::StringLiterals;

namespace {

constexpr int kErrorIndicator = 8;
constexpr int kPause = 600;
constexpr int kTipDelay = 400;
constexpr QRgb kErrorColour = 0xffd93025;

} // namespace

SqlEditor::SqlEditor(QWidget *parent)
    : QsciScintilla(parent)
    , m_lexer(new SqlLexer(this))
{
    setObjectName(u"sql"_s);
    setAccessibleName(u"SQL"_s);
    setUtf8(true);
    setEolMode(EolUnix);
    setMarginWidth(1, 0);
    setBraceMatching(SloppyBraceMatch);
    setTabWidth(4);
    setIndentationsUseTabs(false);
    setAutoIndent(true);
    SendScintilla(SCI_SETSCROLLWIDTH, 1UL);
    SendScintilla(SCI_SETSCROLLWIDTHTRACKING, 1UL);
    SendScintilla(SCI_SETMOUSEDWELLTIME, (unsigned long)kTipDelay);
    indicatorDefine(SquiggleIndicator, kErrorIndicator);
    setIndicatorForegroundColor(QColor::fromRgb(kErrorColour), kErrorIndicator);
    // Keys of the window.
    for (const QKeyCombination key : {Qt::CTRL | Qt::Key_L, Qt::CTRL | Qt::Key_T, Qt::CTRL | Qt::Key_D}) {
        if (QsciCommand *command = standardCommands()->boundTo(key.toCombined()))
            command->setKey(0);
    }
    applyLook();
    m_pause.setSingleShot(true);
    m_pause.setInterval(kPause);
    connect(&m_pause, &QTimer::timeout, this, &SqlEditor::typingPaused);
    connect(this, &QsciScintilla::textChanged, this, [this] {
        if (m_preview)
            return;
        clearError();
        m_pause.start();
    });
    connect(this, &QsciScintillaBase::SCN_CHARADDED, this, &SqlEditor::completeAfter);
    connect(this, &QsciScintillaBase::SCN_DWELLSTART, this, [this](int byte, int x, int y) {
        const int place = byte < 0 ? -1 : placeOf(byte);
        if (m_errorPart.length > 0 && place >= m_errorPart.start && place < m_errorPart.start + m_errorPart.length)
            QToolTip::showText(mapToGlobal(QPoint(x, y)), m_errorText, this);
    });
}

void SqlEditor::setNames(const SqlNames &names)
{
    m_names = names;
    m_lexer->setNames(names);
    recolor();
}

void SqlEditor::applyLook()
{
    const QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    setLexer(nullptr);
    m_lexer->setEditorFont(fixed);
    m_lexer->setPalette(palette());
    setLexer(m_lexer);
    setCaretForegroundColor(palette().color(QPalette::Text));
    setSelectionBackgroundColor(palette().color(QPalette::Highlight));
    setSelectionForegroundColor(palette().color(QPalette::HighlightedText));
    setMatchedBraceBackgroundColor(palette().color(QPalette::Highlight).lighter(130));
    setMatchedBraceForegroundColor(palette().color(QPalette::HighlightedText));
    setUnmatchedBraceForegroundColor(SqlLexer::colourOf(WordKind::Fault, palette()));
    setUnmatchedBraceBackgroundColor(palette().color(QPalette::Base));
}

void SqlEditor::changeEvent(QEvent *event)
{
    QsciScintilla::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        applyLook();
}

// ---- text --------------------------------------------------------------------------------------------------------

bool SqlEditor::isLong() const
{
    return length() > SqlLexer::kMostColoured;
}

QString SqlEditor::sql() const
{
    if (m_preview)
        return m_preview->text;
    const auto *bytes = static_cast<const char *>(SendScintillaPtrResult(SCI_GETCHARACTERPOINTER));
    return QString::fromUtf8(bytes, SendScintilla(SCI_GETLENGTH));
}

void SqlEditor::setSql(const QString &sql)
{
    if (sql == this->sql())
        return;
    replacePart({0, int(this->sql().size())}, sql);
    SendScintilla(SCI_GOTOPOS, 0UL);
}

void SqlEditor::replacePart(const TextPart &part, const QString &text)
{
    const QByteArray bytes = text.toUtf8();
    const unsigned long start = byteOf(part.start);
    const unsigned long end = byteOf(part.start + part.length);
    SendScintilla(SCI_BEGINUNDOACTION);
    SendScintilla(SCI_SETTARGETSTART, start);
    SendScintilla(SCI_SETTARGETEND, end);
    SendScintilla(SCI_REPLACETARGET, (unsigned long)bytes.size(), bytes.constData());
    SendScintilla(SCI_ENDUNDOACTION);
    SendScintilla(SCI_GOTOPOS, start + (unsigned long)bytes.size());
}

void SqlEditor::insertName(const QString &name)
{
    const QString text = sql();
    const TextPart part = selectedPart();
    const auto isWord = [&text](int place) {
        return place >= 0 && place < text.size() && (text[place].isLetterOrNumber() || text[place] == u'_');
    };
    replacePart(part, (isWord(part.start - 1) ? u" "_s : QString()) + name +
                          (isWord(part.start + part.length) ? u" "_s : QString()));
}

int SqlEditor::byteOf(int place) const
{
    return int(QStringView(sql()).left(place).toUtf8().size());
}

int SqlEditor::placeOf(long byte) const
{
    const auto *bytes = static_cast<const char *>(SendScintillaPtrResult(SCI_GETCHARACTERPOINTER));
    return int(QString::fromUtf8(bytes, byte).size());
}

int SqlEditor::cursorPlace() const
{
    return placeOf(SendScintilla(SCI_GETCURRENTPOS));
}

TextPart SqlEditor::selectedPart() const
{
    const int start = placeOf(SendScintilla(SCI_GETSELECTIONSTART));
    return {start, placeOf(SendScintilla(SCI_GETSELECTIONEND)) - start};
}

void SqlEditor::moveCursor(int place)
{
    SendScintilla(SCI_GOTOPOS, (unsigned long)byteOf(place));
}

void SqlEditor::showPreview(const QString &text)
{
    m_preview = Preview{document(), sql(), isModified()};
    setDocument(QsciDocument());
    SendScintilla(SCI_SETCODEPAGE, (unsigned long)SC_CP_UTF8);
    const QByteArray bytes = text.toUtf8();
    SendScintilla(SCI_ADDTEXT, (unsigned long)bytes.size(), bytes.constData());
    SendScintilla(SCI_GOTOPOS, 0UL);
    recolor();
}

void SqlEditor::endPreview()
{
    if (!m_preview)
        return;
    setDocument(m_preview->document);
    m_preview.reset();
    recolor();
}

// ---- error, find -------------------------------------------------------------------------------------------------

void SqlEditor::markError(const TextPart &part, const QString &text)
{
    m_errorPart = part;
    m_errorText = text;
    SendScintilla(SCI_SETINDICATORCURRENT, (unsigned long)kErrorIndicator);
    SendScintilla(SCI_INDICATORCLEARRANGE, 0UL, SendScintilla(SCI_GETLENGTH));
    if (part.length > 0) {
        const int start = byteOf(part.start);
        SendScintilla(SCI_INDICATORFILLRANGE, (unsigned long)start, long(byteOf(part.start + part.length) - start));
    }
}

bool SqlEditor::find(const QString &text, bool isForward, bool isCaseSensitive)
{
    int line = -1;
    int index = -1;
    if (!isForward && hasSelectedText()) {
        int endLine = 0;
        int endIndex = 0;
        getSelection(&line, &index, &endLine, &endIndex);
    }
    return !text.isEmpty() && findFirst(text, false, isCaseSensitive, false, true, isForward, line, index);
}

int SqlEditor::replaceEvery(const QString &text, const QString &by, bool isCaseSensitive)
{
    QString changed = sql();
    const Qt::CaseSensitivity sensitivity = isCaseSensitive ? Qt::CaseSensitive : Qt::CaseInsensitive;
    const int found = text.isEmpty() ? 0 : int(changed.count(text, sensitivity));
    if (found > 0)
        setSql(changed.replace(text, by, sensitivity));
    return found;
}

// ---- completion --------------------------------------------------------------------------------------------------

void SqlEditor::keyPressEvent(QKeyEvent *event)
{
    if (m_popup && m_popup->isVisible() && m_popup->handleKey(event->key(), event->modifiers()))
        return;
    if (event->key() == Qt::Key_Space && event->modifiers() == Qt::ControlModifier) {
        offerCompletions();
        return;
    }
    QsciScintilla::keyPressEvent(event);
    const bool isEdit = event->key() == Qt::Key_Backspace || !event->text().isEmpty();
    if (m_popup && m_popup->isVisible() && (!isEdit || cursorPlace() < m_popup->start()))
        m_popup->hide();
    else if (m_popup && m_popup->isVisible() && event->key() == Qt::Key_Backspace)
        offerCompletions();
}

void SqlEditor::focusOutEvent(QFocusEvent *event)
{
    if (m_popup)
        m_popup->hide();
    QsciScintilla::focusOutEvent(event);
}

void SqlEditor::completeAfter(int character)
{
    const QChar c(character > 0 && character < 0x10000 ? char16_t(character) : u' ');
    if (c == u'.' || c == u'[' || c == u'!' || c.isLetterOrNumber() || c == u'_')
        offerCompletions();
    else if (m_popup)
        m_popup->hide();
    if ((c == u'(' || c == u',') && !isLong())
        showCall();
}

void SqlEditor::offerCompletions()
{
    if (m_preview || isReadOnly() || isLong())
        return;
    if (!m_popup) {
        m_popup = new CompletionPopup(window());
        connect(m_popup, &CompletionPopup::accepted, this, &SqlEditor::takeCompletion);
    }
    const int cursor = cursorPlace();
    CompletionList list = completionsAt(sql(), cursor, m_names);
    // A word that is already complete needs no list.
    if (list.items.size() == 1 && list.items[0].text.size() == cursor - list.start)
        list.items.clear();
    const long byte = SendScintilla(SCI_GETCURRENTPOS);
    const int x = int(SendScintilla(SCI_POINTXFROMPOSITION, 0UL, byte));
    const int y = int(SendScintilla(SCI_POINTYFROMPOSITION, 0UL, byte));
    const int height = int(SendScintilla(SCI_TEXTHEIGHT, 0UL));
    m_popup->offer(list, viewport(), QRect(x, y, 1, height));
}

void SqlEditor::takeCompletion(const QString &text)
{
    const QString sql = this->sql();
    TextPart part{m_popup->start(), cursorPlace() - m_popup->start()};
    const int end = part.start + part.length;
    const bool isClosed = text.endsWith(u']') || text.endsWith(u'(');
    if (isClosed && end < sql.size() && sql[end] == text.back())
        ++part.length;
    replacePart(part, text);
    if (text.endsWith(u'('))
        showCall();
}

void SqlEditor::showCall()
{
    const QStringList lines = callAt(sql(), cursorPlace());
    if (lines.isEmpty())
        return;
    const QByteArray tip = lines.join(u'\n').toUtf8();
    SendScintilla(SCI_CALLTIPSETBACK, palette().color(QPalette::ToolTipBase));
    SendScintilla(SCI_CALLTIPSETFORE, palette().color(QPalette::ToolTipText));
    SendScintilla(SCI_CALLTIPSHOW, (unsigned long)SendScintilla(SCI_GETCURRENTPOS), tip.constData());
}

void SqlEditor::setPreferredSize(int lines, int characters)
{
    const int height = int(SendScintilla(SCI_TEXTHEIGHT, 0UL));
    m_size = QSize(characters * characterWidth(), lines * height) + QSize(30, 20);
    updateGeometry();
}

int SqlEditor::characterWidth() const
{
    return QFontMetrics(QFontDatabase::systemFont(QFontDatabase::FixedFont)).horizontalAdvance(u'A');
}

} // namespace query
