#pragma once
#include "FillPreview.h"
#include "FillRunner.h"

#include <tarnwick/OptionPrompts.h>

namespace map {

/// What an editor works with. All must live as long as the editor.
struct FillEditorContext
{
    MapDocument &document;
    const FillRunner &runner;
    tarnwick::PathRoots roots; ///< of the option files
};

/// What the dialogs of all kinds of fills do, without a window. It holds a working fill whose parameters are the
/// dialog's values: those remembered from the last time for a new fill, those of the entry for one that is edited.
/// Nothing changes before accept().
class FillEditor
{
public:
    virtual ~FillEditor() = default;
    FillEditor(const FillEditor &) = delete;
    FillEditor &operator=(const FillEditor &) = delete;

    virtual const plans::MapFill &fill() const = 0;
    bool isNew() const { return m_place < 0; }
    /// What the legend will call the entry.
    QString label() const { return fill().entryLabel(); }

    /// The mark that the entry will have: for a new one the next letter, unless the user chose another symbol.
    ellery::TubeMark mark() const;
    /// The user's choice, which takes the place of the automatic letter when it differs from it.
    void setMark(const ellery::TubeMark &mark);

    /// What the map would show.
    const FillPreview &preview() const { return m_preview; }
    const MapDocument &document() const { return m_context.document; }
    /// What the fill finds, in words.
    virtual QString summary() const = 0;
    /// Why it would find nothing, or less than wanted; empty otherwise. No reason to refuse.
    virtual QString warning() const { return {}; }

    /// OK: adds the fill, remembering its values for the next new one, or changes the entry. One change to be undone.
    void accept();

    /// After every change of the working fill.
    std::function<void()> changed;

protected:
    FillEditor(const FillEditorContext &context, int place);
    virtual plans::MapFill &working() = 0;
    /// Puts right what must not reach the fill.
    virtual void correctParameters() {}
    virtual void rememberOptions() = 0;
    /// Makes a copy of the fill fit to be shown while the user is still choosing.
    virtual void makeExample(plans::MapFill &) const {}
    /// The preview made anew, and those who look at it told.
    void refresh();

    const ellery::SteamGen &component() const { return document().component(); }
    const ellery::TubeStates &tubes() const { return document().tubes(); }
    /// "1 tube", "1,234 tubes"
    static QString tubeCount(int count);

    const FillEditorContext m_context;

private:
    const int m_place;
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
    FillEditorOf(const FillEditorContext &context, int place)
        : FillEditor(context, place)
    {
        if (place >= 0) {
            m_fill = static_cast<const Fill &>(document().entry(place));
        } else {
            Options options;
            loadOptions(options, context.roots, context.runner.prompts());
            m_fill.parameters = options.parameters;
        }
    }
    plans::MapFill &working() override { return m_fill; }
    void rememberOptions() override
    {
        Options options;
        options.parameters = m_fill.parameters;
        storeOptions(options, m_context.roots, m_context.runner.prompts());
    }

    Fill m_fill;
};

} // namespace map
