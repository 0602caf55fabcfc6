#pragma once
// SpinBoxDelegate: the cell editor of the table of points. Each cell is
// edited in a QDoubleSpinBox with five decimals confined to
// -999.99999 ... 999.99999; the value goes in and out of the cell through
// QItemDelegate's handling of the editor's value property, as a double.

#include <QItemDelegate>

class SpinBoxDelegate : public QItemDelegate {
    Q_OBJECT

public:
    explicit SpinBoxDelegate(QObject* parent = nullptr);

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
};
