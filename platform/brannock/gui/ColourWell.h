#pragma once
#include <ellery/TubeMark.h>
#include <QColor>
#include <QPushButton>

namespace brannock {

/// A push button painted in a colour, with the symbol on it.
class ColourWell : public QPushButton
{
    Q_OBJECT
public:
    explicit ColourWell(QWidget *parent = nullptr);
    void setMark(ellery::Symbol symbol, const QColor &colour);
    QColor colour() const { return m_colour; }
    QSize sizeHint() const override { return QSize(kSide, kSide); }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    static constexpr int kSide = 200;
    ellery::Symbol m_symbol;
    QColor m_colour;
};

} // namespace brannock
