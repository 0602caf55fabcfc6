// Reading the input panel: the function text and the table of points.

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include <QByteArray>
#include <QLineEdit>
#include <QTableWidget>

#include "app/ui_widget.h"
#include "app/widget.h"
#include "errors/errors.h"

namespace {

// The panel keeps the table at the task's shape; a table that has lost that
// shape (a missing cell, a column too many) cannot be read and is reported
// like any index out of range, through the general error message.
void requireCell(const QTableWidgetItem* item, int column, int columns, const std::vector<Point>& points) {
    if (!item || column >= columns || column >= static_cast<int>(points.size()))
        throw MatrixIndexOutOfBound();
}

// Sorts by x and rejects neighbours closer than 1e-8 in x.
void sortAndCheck(std::vector<Point>& points, int columns) {
    std::sort(points.begin(), points.end());
    for (int j = 0; j + 1 < columns && j + 1 < static_cast<int>(points.size()); ++j) {
        if (std::fabs(points[j + 1].x - points[j].x) < 1e-8) throw EqualPointsException();
    }
}

}  // namespace

Function Widget::parseFunc() {
    // Latin-1: a character the evaluator cannot know becomes '?', which it
    // then rejects as a wrong format.
    const QByteArray bytes = ui->exprFunc->text().toLatin1();
    std::string text(bytes.constData(), static_cast<size_t>(bytes.size()));
    if (text.empty()) text = "0";
    return Function(text);
}

void Widget::calcTableFunc(std::vector<Point>& points) {
    QTableWidget* table = ui->tableFunc;
    if (table->rowCount() != 1) throw MatrixIndexOutOfBound();
    Function f = parseFunc();
    for (int j = 0; j < table->columnCount(); ++j) {
        const QTableWidgetItem* item = table->item(0, j);
        requireCell(item, j, tableColumns[task], points);
        const double x = item->data(Qt::DisplayRole).toDouble();
        points[j].x = x;
        points[j].y = f(x);
    }
    sortAndCheck(points, tableColumns[task]);
}

void Widget::getTableFunc(std::vector<Point>& points) {
    QTableWidget* table = ui->tableFunc;
    if (table->rowCount() != 2) throw MatrixIndexOutOfBound();
    for (int j = 0; j < table->columnCount(); ++j) {
        const QTableWidgetItem* xItem = table->item(0, j);
        const QTableWidgetItem* yItem = table->item(1, j);
        requireCell(xItem, j, tableColumns[task], points);
        requireCell(yItem, j, tableColumns[task], points);
        points[j].x = xItem->data(Qt::DisplayRole).toDouble();
        points[j].y = yItem->data(Qt::DisplayRole).toDouble();
    }
    sortAndCheck(points, tableColumns[task]);
}
