#pragma once
#include "Scintilla.h"

#include <query/SqlWords.h>

#include <optional>
#include <QTimer>

namespace query {

class CompletionPopup;
class SqlLexer;

/// The editor of SQL texts: colours by the engine's own words, completion, matching brackets, undo of every change, the
/// mark of an error. Places are in UTF-16 units.
class SqlEditor : public QsciScintilla
{
    Q_OBJECT
public:
    explicit SqlEditor(QWidget *parent = nullptr);

    /// Names for colours and completion.
    void setNames(const SqlNames &names);

    /// The text exactly as it is; while a preview is shown, the text below it.
    QString sql() const;
    /// Replaces the text in one step of undo.
    void setSql(const QString &sql);
    /// Replaces a part of the text in one step of undo.
    void replacePart(const TextPart &part, const QString &text);
    /// Puts a name in place of the selection, with blanks where it would touch other words.
    void insertName(const QString &name);
    /// A text that is too long to be understood while it is typed: it has no colours, completions and marks.
    bool isLong() const;
    int cursorPlace() const;
    /// The selected part; length 0 if nothing is selected.
    TextPart selectedPart() const;

    /// Shows a text in place of the own one, which keeps its undo, until endPreview().
    void showPreview(const QString &text);
    void endPreview();
    /// Of the own text, also while a preview is shown.
    bool isTextModified() const { return m_preview ? m_preview->isModified : isModified(); }
    bool hasPreview() const { return m_preview.has_value(); }

    /// Underlines a part; the text is its tip. A part without length shows nothing.
    void markError(const TextPart &part, const QString &text);
    /// The text as it is was checked otherwise: typingPaused() is not emitted for it.
    void endPause() { m_pause.stop(); }
    void clearError() { markError({}, {}); }
    bool hasError() const { return m_errorPart.length > 0; }
    void moveCursor(int place);

    /// Selects the next occurrence, around the ends of the text. Returns false if there is none.
    bool find(const QString &text, bool isForward, bool isCaseSensitive);
    /// Replaces every occurrence in one step of undo. Returns their number.
    int replaceEvery(const QString &text, const QString &by, bool isCaseSensitive);

    QSize sizeHint() const override { return m_size; }
    /// Preferred size for so many lines and characters.
    void setPreferredSize(int lines, int characters);
    /// Points by which the user has enlarged the text (Ctrl and wheel).
    int zoom() const { return int(SendScintilla(SCI_GETZOOM)); }
    /// Width of the letter A.
    int characterWidth() const;

Q_SIGNALS:
    /// The text was not changed for a moment after a change.
    void typingPaused();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void applyLook();
    void completeAfter(int character);
    void offerCompletions();
    void takeCompletion(const QString &text);
    void showCall();
    int byteOf(int place) const;
    int placeOf(long byte) const;

    SqlLexer *m_lexer;
    SqlNames m_names;
    CompletionPopup *m_popup = nullptr;
    QTimer m_pause;
    QSize m_size;
    struct Preview
    {
        QsciDocument document;
        QString text;
        bool isModified;
    };
    std::optional<Preview> m_preview;
    TextPart m_errorPart;
    QString m_errorText;
};

} // namespace query
