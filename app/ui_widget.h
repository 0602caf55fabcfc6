#pragma once
// Ui_Widget: the main window's widget tree, built in code in the style of
// Qt's form compiler. setupUi creates every child with absolute geometry (no
// layouts) onto the given window, sets the tab order and the texts, and
// connects the window's on_<object>_<signal> slots by name. The form object
// only points at the widgets: they belong to the window through Qt's
// parent-child ownership.

class QDoubleSpinBox;
class QFrame;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QSpinBox;
class QTabWidget;
class QTableWidget;
class QWidget;
class QwtPlot;

class Ui_Widget {
public:
    QTabWidget* tabWidget;
    QWidget* tab;
    QFrame* frame_2;
    QLabel* label_func;
    QTableWidget* tableFunc;
    QLineEdit* exprFunc;
    QLabel* label_f;
    QLabel* label_n;
    QSpinBox* n;
    QPushButton* closeButton;
    QFrame* frame_3;
    QLabel* label_parameters;
    QLabel* label_x1;
    QDoubleSpinBox* x1;
    QLabel* label_x2;
    QDoubleSpinBox* x2;
    QLabel* label_h1;
    QDoubleSpinBox* h1;
    QLabel* label_h2;
    QDoubleSpinBox* h2;
    QRadioButton* checkRectMethod;
    QRadioButton* checkTrapezMethod;
    QRadioButton* checkSimpsonMethod;
    QPushButton* helpButton;
    QFrame* frame;
    QLabel* label_task;
    QRadioButton* checkInterpolation;
    QRadioButton* checkSpline;
    QRadioButton* checkMNK;
    QRadioButton* checkDifferentiation;
    QRadioButton* checkIntegration;
    QPushButton* calcButton;
    QPushButton* clearButton;
    QWidget* tab_2;
    QwtPlot* plot;
    QFrame* frame_4;
    QLabel* label_result;
    QLabel* label_res1;
    QLabel* label_res2;
    QLineEdit* res1;
    QLineEdit* res2;
    QFrame* frame_5;
    QLabel* label_error;
    QLabel* label_eps1;
    QLineEdit* eps1;
    QLineEdit* eps2;
    QLabel* label_eps2;

    void setupUi(QWidget* Widget);
    void retranslateUi(QWidget* Widget);
};
