#include "FillDialogs.h"

#include "BoxFillDlg.h"
#include "PatternFillDlg.h"
#include "PercentFillDlg.h"

#include <algorithm>
#include <iterator>

namespace map {

namespace {

template <typename Editor, typename Dialog>
bool run(const FillDialogContext &context, int entry)
{
    Editor editor(context.editing, entry);
    Dialog dialog(editor, context);
    return dialog.exec() == QDialog::Accepted;
}

struct KindDialog
{
    const char16_t *key;
    bool (*run)(const FillDialogContext &context, int entry);
};

constexpr KindDialog kDialogs[] = {
    {u"RAND FILL", run<PcntFillEditor, PercentFillDlg>},
    {u"BOX", run<BoxFillEditor, BoxFillDlg>},
    {u"PATTERN", run<PatternFillEditor, PatternFillDlg>},
};

bool runDialog(const FillDialogContext &context, QStringView key, int entry)
{
    const auto *found = std::find_if(std::begin(kDialogs), std::end(kDialogs),
                                     [key](const KindDialog &dialog) { return key == QStringView(dialog.key); });
    return found != std::end(kDialogs) && found->run(context, entry);
}

} // namespace

bool hasFillDialog(QStringView key)
{
    return std::any_of(std::begin(kDialogs), std::end(kDialogs),
                       [key](const KindDialog &dialog) { return key == QStringView(dialog.key); });
}

bool openNewFill(const FillDialogContext &context, QStringView key)
{
    return runDialog(context, key, -1);
}

bool openFill(const FillDialogContext &context, int entry)
{
    return runDialog(context, context.editing.document.entry(entry).typeKey, entry);
}

} // namespace map
