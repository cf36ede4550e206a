#pragma once
#include "ColourChooser.h"

#include <brannock/paint/MapScene.h>
#include <QDialog>

class QDialogButtonBox;
class QLabel;
class QLayout;
class QLineEdit;

namespace brannock {

class ColourWell;
class SymbolGrid;
class SymbolSample;

/// "Choose Symbol": one symbol and a colour for an entry of the map's legend.
class ChooseSymbolDlg : public QDialog
{
    Q_OBJECT
public:
    /// colours must live as long as the dialog. options: how the map looks, for the sample.
    ChooseSymbolDlg(const TubeMark &mark, const MapOptions &options, ColourChooser &colours, QWidget *parent = nullptr);
    /// What is chosen so far; that of the caller when the dialog was cancelled.
    const TubeMark &mark() const { return m_mark; }

    void reject() override;

Q_SIGNALS:
    /// Another symbol or colour was chosen; nothing is decided before the dialog ends.
    void markChanged(const brannock::TubeMark &mark);

private:
    QLayout *makeLeft();
    QLayout *makeRight();
    QLayout *makePalette();
    void setSymbol(char16_t symbol);
    void setColour(const QColor &colour);
    void chooseColour();
    void find(const QString &text);
    void showMark();
    void changeMark();

    const TubeMark m_before;
    TubeMark m_mark;
    ColourChooser &m_colours;
    SymbolGrid *m_grid;
    ColourWell *m_well;
    SymbolSample *m_sample;
    QLineEdit *m_find;
    QLabel *m_code;
    QLabel *m_name;
};

} // namespace brannock
