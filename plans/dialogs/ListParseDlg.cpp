#include "ListParseDlg.h"

#include <tarnwick/gui/JTableWin.h>

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QHBoxLayout>

using namespace Qt::StringLiterals;

namespace plans {

ListParseDlg::ListParseDlg(ListEditor &editor, const std::function<void()> &optionChanged, QWidget *parent)
    : JDialog(editor.prompts(), nullptr, u"listParseDlg"_s, parent)
    , m_editor(editor)
    , m_grid(editor)
    , m_table(new tarnwick::JTableWin(prompts()))
{
    auto *hasNumbers = new QCheckBox(u"File &Has Entry Numbers"_s);
    hasNumbers->setObjectName(u"hasEntryNumbers"_s);
    hasNumbers->setChecked(TubeListFile::hasEntryNumbers(editor.file(), editor.options.fileHasEntryNumbers));
    const bool isAlways = TubeListFile::hasEntryNumbers(editor.file(), false);
    hasNumbers->setEnabled(!isAlways);
    hasNumbers->setToolTip(isAlways ? u"Lines of a .lst file always begin with entry numbers."_s
                                    : u"Lines of files that do not end in .lst begin with entry numbers"_s);
    titleBar().addWidget(hasNumbers);
    titleBar().addStretch(1);
    m_table->setObjectName(u"parsedLines"_s);
    m_table->setAccessibleName(u"Lines of the file"_s);
    m_table->setSource(&m_grid);
    body().addWidget(m_table, 1);
    connect(hasNumbers, &QCheckBox::toggled, this, [this, optionChanged](bool isOn) {
        run([&] {
            m_editor.options.fileHasEntryNumbers = isOn;
            optionChanged();
            m_table->reload();
        });
    });
    buttons().setStandardButtons(QDialogButtonBox::Close);
    finish(m_table, {680, 520});
}

ListParseDlg::~ListParseDlg()
{
    m_table->setSource(nullptr);
}

QString ListParseDlg::caption() const
{
    return u"List Parse: "_s + m_editor.shownName();
}

} // namespace plans
