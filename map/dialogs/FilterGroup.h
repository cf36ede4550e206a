#pragma once
#include <QGroupBox>

#include <plans/TubeFilter.h>

class QComboBox;

namespace map {

/// Group "Fill Mode": the tubes of the map that a fill can take.
class FilterGroup : public QGroupBox
{
    Q_OBJECT
public:
    explicit FilterGroup(QWidget *parent = nullptr);
    /// An unknown number leaves its box empty.
    void setFilter(const plans::TubeFilter &filter);
    plans::TubeFilter filter() const;

Q_SIGNALS:
    /// Emitted when the user changed a choice.
    void filterEdited();

private:
    plans::TubeFilter m_filter;
    QComboBox *m_region;
    QComboBox *m_tube;
};

} // namespace map
