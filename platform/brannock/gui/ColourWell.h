#pragma once
#include <QColor>
#include <QPushButton>

namespace brannock {

/// A push button painted in a colour, with the symbol on it.
class ColourWell : public QPushButton
{
    Q_OBJECT
public:
    explicit ColourWell(QWidget *parent = nullptr);
    void setMark(char16_t symbol, const QColor &colour);
    QColor colour() const { return m_colour; }
    QSize sizeHint() const override { return QSize(kSide, kSide); }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    static constexpr int kSide = 200;
    char16_t m_symbol = 0;
    QColor m_colour;
};

} // namespace brannock
