#pragma once
#include <query/SqlCompletion.h>

#include <QListWidget>

namespace query {

/// The list of completions below the cursor. It never takes the focus: the editor passes it keys.
class CompletionPopup : public QListWidget
{
    Q_OBJECT
public:
    /// parent: the editor's viewport; the list may cover what is around it.
    explicit CompletionPopup(QWidget *parent);

    /// Shows the items at a point of the editor; hides an empty list.
    void offer(const CompletionList &list, QWidget *editor, const QRect &cursor);
    /// Handles a key while the list is shown. Returns true if it was for the list.
    bool handleKey(int key, Qt::KeyboardModifiers modifiers);
    int start() const { return m_list.start; }

Q_SIGNALS:
    void accepted(const QString &text);

private:
    void accept();
    void move(int rows);

    CompletionList m_list;
    bool m_hasMoved = false; ///< the user has moved in the list: Return accepts
};

} // namespace query
