#include "app/spin_box_delegate.h"

#include <QDoubleSpinBox>

#include "app/accessibility.h"

SpinBoxDelegate::SpinBoxDelegate(QObject* parent) : QItemDelegate(parent) {}

QWidget* SpinBoxDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&,
                                       const QModelIndex& index) const {
    auto* editor = new QDoubleSpinBox(parent);
    // Decimals first: the range and the value are rounded to them.
    editor->setDecimals(5);
    editor->setMinimum(-999.99999);
    editor->setMaximum(999.99999);
    editor->setSingleStep(0.00001);
    editor->setValue(0);
    // A screen reader names the box by the cell it edits.
    editor->setAccessibleName(cellPlace(index));
    return editor;
}
