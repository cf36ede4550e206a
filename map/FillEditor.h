#pragma once
#include "FillPreview.h"
#include "FillRunner.h"

#include <tarnwick/OptionPrompts.h>

namespace map {

/// All must outlive the editor.
struct FillEditorContext
{
    MapDocument &document;
    const FillRunner &runner;
    tarnwick::PathRoots roots; ///< folders of the option files
};

/// Logic of the dialogs of all kinds of fills, without a window. Holds a working fill with the values of the dialog:
/// for a new fill those stored the last time, for an entry those of the entry. The map changes only in accept().
class FillEditor
{
public:
    virtual ~FillEditor() = default;
    FillEditor(const FillEditor &) = delete;
    FillEditor &operator=(const FillEditor &) = delete;

    virtual const plans::MapFill &fill() const = 0;
    bool isNew() const { return m_place < 0; }
    /// Label of the entry in the legend.
    QString label() const { return fill().entryLabel(); }

    /// The mark that the entry will get. A new entry gets the next letter, unless the user chose another symbol.
    ellery::TubeMark mark() const;
    /// Sets the mark that the user chose. If its symbol differs from the automatic letter, it replaces the letter.
    void setMark(const ellery::TubeMark &mark);

    /// The map with the fill.
    const FillPreview &preview() const { return m_preview; }
    const MapDocument &document() const { return m_context.document; }
    /// Result of the fill as text.
    virtual QString summary() const = 0;
    /// Reason why the fill finds no tubes or fewer than wanted; empty otherwise. Does not prevent accept().
    virtual QString warning() const { return {}; }

    /// Adds the fill and stores its values for the next new fill, or changes the entry, as one change.
    void accept();

    /// Called after each change of the working fill.
    std::function<void()> changed;

protected:
    FillEditor(const FillEditorContext &context, int place);
    virtual plans::MapFill &working() = 0;
    /// Replaces parameters that a fill must not have.
    virtual void correctParameters() {}
    virtual void rememberOptions() = 0;
    /// Prepares a copy of the fill for the preview.
    virtual void makeExample(plans::MapFill &) const {}
    /// Computes the preview again and calls changed.
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

/// Editor of one kind of fill, with the option record that stores its values.
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
