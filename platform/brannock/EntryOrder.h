#pragma once
#include <algorithm>
#include <QList>
#include <tuple>

namespace brannock {

/// Sorts the entries of a plan or tube list. Equal ones keep their order. Order: InspPlan::Order.
template <typename Entry, typename Order>
void sortEntries(QList<Entry> &entries, Order order)
{
    std::stable_sort(entries.begin(), entries.end(), [order](const Entry &a, const Entry &b) {
        switch (order) {
        case Order::Row:
            return std::tie(a.sec, a.row, a.col) < std::tie(b.sec, b.row, b.col);
        case Order::Column:
            return std::tie(a.sec, a.col, a.row) < std::tie(b.sec, b.col, b.row);
        case Order::Entry:
            break;
        }
        return a.entryNum < b.entryNum;
    });
}

} // namespace brannock
