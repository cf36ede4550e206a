#pragma once
#include "EntriesEditor.h"
#include "TubeListFile.h"

#include <ellery/TubeStates.h>

namespace plans {

/// Logic of the dialog "List Fill", without a window.
class ListEditor : public EntriesEditor
{
public:
    using EntriesEditor::EntriesEditor;

    const TubeList &list() const { return m_list; }
    /// Takes over the list of a fill.
    void setList(const TubeList &list);
    ListFillOptions options;

    /// "File List - ..." or "ARVO List - ..."
    QString caption() const override;
    QString shownName() const override;
    QString description() const override { return m_list.description; }
    QString summary() const override;

    // Editing.
    Order order() const override { return m_order; }
    void setOrder(Order order) override;
    void setDescription(const QString &description);
    int count() const override { return int(m_list.entries.size()); }
    ellery::TubeAddress address(int place) const override { return m_list.entries[place].address(); }
    /// Returns false after reporting a text that is no number.
    bool setNumber(int place, const QString &text);
    bool setLabel(int place, ellery::Axis axis, const QString &text) override;
    /// Append every tube that is selected or carries a symbol, also those that the list has. Return the place of the
    /// first.
    int addSelected(const ellery::TubeStates &tubes);
    int addSymbols(const ellery::TubeStates &tubes);
    void removeEntries(const QList<int> &places) override;
    int moveEntries(const QList<int> &places, int before) override;
    void combine(const QList<ellery::TubeAddress> &tubes, Combine how) override;
    int paste(const QString &text) override;
    /// Asks first.
    bool clear();
    /// Numbers the entries from this number in the order of these places; the others follow.
    void setIndex(qint32 first, const QList<int> &places);

    // Files. Machine paths.
    bool open(const QString &machinePath) override;
    bool store(const QString &machinePath) override;
    QString fileName() const override;
    /// The list's file, for commands on it. Reports and returns an empty text if there is none.
    QString fileForTools() const;
    /// Parses the list's file again for parsed(); the list stays as it is. Reports a failure and returns false.
    bool parseFile();
    /// How the file was parsed.
    const TubeListFile &parsed() const { return m_parsed; }

    // Database.
    bool fetch(const QString &name, tarnwick::Progress *progress) override;
    bool upload(const QString &name, tarnwick::Progress *progress) override;
    bool remove() override;
    QString storedName() const override { return m_isFromFile ? QString() : m_list.name; }
    QString offeredName() const override;

    QByteArray draft() const override;
    void restoreDraft(const QByteArray &content) override;
    QString nameInDraft(const QByteArray &content) const override;

private:
    template <typename Takes>
    int add(const ellery::TubeStates &tubes, Takes takes);
    bool read(const QString &machinePath, TubeListFile &file) const;
    void append(const ellery::TubeAddress &address, const ellery::TubeMark &mark);
    void take(const TubeList &list, bool isFromFile, const QString &file);

    TubeList m_list;
    TubeListFile m_parsed;
    Order m_order = Order::Entry;
};

} // namespace plans
