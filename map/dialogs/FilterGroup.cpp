#include "FilterGroup.h"

#include <QComboBox>
#include <QFormLayout>

using namespace Qt::StringLiterals;

namespace map {

FilterGroup::FilterGroup(QWidget *parent)
    : QGroupBox(u"Fill Mode"_s, parent)
    , m_region(new QComboBox)
    , m_tube(new QComboBox)
{
    m_region->setObjectName(u"region"_s);
    m_region->addItems({u"Entire Map"_s, u"Selected Tubes"_s});
    m_tube->setObjectName(u"tube"_s);
    m_tube->addItems({u"Symbols And Open"_s, u"Symbols Only"_s, u"Open Tubes Only"_s});
    auto *form = new QFormLayout(this);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    form->addRow(u"&Region"_s, m_region);
    form->addRow(u"&Tube"_s, m_tube);
    connect(m_region, &QComboBox::activated, this, [this](int choice) {
        m_filter.region = choice;
        Q_EMIT filterEdited();
    });
    connect(m_tube, &QComboBox::activated, this, [this](int choice) {
        m_filter.tube = choice;
        Q_EMIT filterEdited();
    });
}

void FilterGroup::setFilter(const plans::TubeFilter &filter)
{
    m_filter = filter;
    m_region->setCurrentIndex(filter.region < m_region->count() ? filter.region : -1);
    m_tube->setCurrentIndex(filter.tube < m_tube->count() ? filter.tube : -1);
}

plans::TubeFilter FilterGroup::filter() const
{
    return m_filter;
}

} // namespace map
