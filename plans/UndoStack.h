#pragma once
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <vector>

namespace plans {

/// One change that was made and can be taken back and made again. Each of undo() and redo() brings the whole state from
/// before or after the change, whatever stands now.
class UndoCommand
{
public:
    explicit UndoCommand(const QString &label)
        : m_label(label)
    {
    }
    virtual ~UndoCommand() = default;
    const QString &label() const { return m_label; }
    virtual void undo() = 0;
    virtual void redo() = 0;

private:
    QString m_label;
};

/// The changes in order, with the place that stands for now and the place of the last save. Logic only: views listen.
class UndoStack
{
public:
    /// Older changes fall off the end, so that memory stays bounded.
    static constexpr int kMaxLevels = 500;

    /// The change has been made already; what could be redone is forgotten.
    void push(std::unique_ptr<UndoCommand> command);
    /// The newest change has turned out to be none.
    void dropLast();
    void clear();

    bool canUndo() const { return m_position > 0; }
    bool canRedo() const { return m_position < count(); }
    /// Empty when there is none.
    QString undoLabel() const { return canUndo() ? m_commands[size_t(m_position - 1)]->label() : QString(); }
    QString redoLabel() const { return canRedo() ? m_commands[size_t(m_position)]->label() : QString(); }
    void undo();
    void redo();

    /// All changes, oldest first; those from position() on are undone.
    QStringList labels() const;
    int count() const { return int(m_commands.size()); }
    int position() const { return m_position; }
    /// As many changes stand as if they had been undone or redone one by one; only the last one of them runs.
    void moveTo(int position);

    /// Now is what lies on the disk.
    void setClean() { m_clean = m_position; }
    void setUnclean() { m_clean = kNowhere; }
    bool isClean() const { return m_clean == m_position; }
    /// The position that lies on the disk; -1: none does.
    int cleanPosition() const { return m_clean; }

private:
    static constexpr int kNowhere = -1;

    std::vector<std::unique_ptr<UndoCommand>> m_commands;
    int m_position = 0;
    int m_clean = 0;
};

} // namespace plans
