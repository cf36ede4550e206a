#pragma once
#include "FillPreview.h"

#include <tarnwick/OptionPrompts.h>

namespace plans {

/// What the dialogs of all kinds of fills do, without a window. It holds a working fill whose parameters are the
/// dialog's values: those remembered from the last time for a new fill, those of the entry for one that is edited.
/// Nothing changes before accept().
class FillEditor
{
public:
    virtual ~FillEditor() = default;
    FillEditor(const FillEditor &) = delete;
    FillEditor &operator=(const FillEditor &) = delete;

    virtual const MapFill &fill() const = 0;
    bool isNew() const { return m_entry < 0; }
    /// What the legend will call the entry.
    QString label() const { return fill().entryLabel(); }

    /// The symbol that the entry will have: for a new one the next letter, unless the user chose another.
    char16_t symbol() const;
    quint32 colour() const { return fill().colour; }
    /// The user's choice, which takes the place of the automatic letter when it differs from it.
    void setMark(char16_t symbol, quint32 colour);

    /// What the map would show.
    FillPreview &preview() { return m_preview; }
    const FillPreview &preview() const { return m_preview; }
    /// What the fill finds, in words.
    virtual QString summary() const = 0;
    /// Why it would find nothing, or less than wanted; empty otherwise. No reason to refuse.
    virtual QString warning() const { return {}; }

    /// OK: adds the fill, remembering its values for the next new one, or changes the entry. One change to be undone.
    void accept();

    /// After every change of the working fill.
    std::function<void()> changed;

protected:
    FillEditor(MapHost &host, const tarnwick::PathRoots &roots, int entry);
    virtual MapFill &working() = 0;
    /// Puts right what must not reach the fill.
    virtual void settle() {}
    virtual void rememberOptions() = 0;
    /// Makes a copy of the fill fit to be shown while the user is still choosing.
    virtual void makeExample(MapFill &) const {}
    /// The preview made anew, and those who look at it told.
    void refresh();

    const ellery::SteamGen &steamGen() const { return m_host.steamGen(); }
    const ellery::TubeStates &tubes() const { return m_host.tubes(); }
    /// "1 tube", "1,234 tubes"
    static QString tubeCount(int count);

    MapHost &m_host;
    const tarnwick::PathRoots m_roots;

private:
    const int m_entry;
    bool m_hasChosenSymbol = false;
    FillPreview m_preview;
};

/// The same for one kind, with the option record that remembers its values.
template <typename Fill, typename Options>
class FillEditorOf : public FillEditor
{
public:
    const Fill &fill() const override { return m_fill; }
    const typename Fill::Parameters &parameters() const { return m_fill.parameters; }
    void setParameters(const typename Fill::Parameters &parameters)
    {
        if (parameters == m_fill.parameters)
            return;
        m_fill.parameters = parameters;
        refresh();
    }

protected:
    FillEditorOf(MapHost &host, const tarnwick::PathRoots &roots, int entry)
        : FillEditor(host, roots, entry)
    {
        if (entry >= 0) {
            m_fill = static_cast<const Fill &>(host.legend().entry(entry));
        } else {
            Options options;
            loadOptions(options, roots, host.prompts());
            m_fill.parameters = options.parameters;
        }
    }
    MapFill &working() override { return m_fill; }
    void rememberOptions() override
    {
        Options options;
        options.parameters = m_fill.parameters;
        storeOptions(options, m_roots, m_host.prompts());
    }

    Fill m_fill;
};

} // namespace plans
