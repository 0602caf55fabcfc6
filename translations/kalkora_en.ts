<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="ru_RU">
<context>
    <name>Report</name>
    <message>
        <source>Kalkora: отчёт о расчёте «%1»</source>
        <translation>Kalkora: report of the calculation “%1”</translation>
    </message>
    <message>
        <source>Расчёт выполнен %1</source>
        <translation>Calculated on %1</translation>
    </message>
    <message>
        <source>Журнал расчёта записан не полностью (%1): строки, которые не удалось записать, потеряны.</source>
        <translation>The run log was not written in full (%1): the lines that could not be written are lost.</translation>
    </message>
    <message>
        <source>файл журнала короче, чем был при расчёте</source>
        <translation>the run log file is shorter than it was at the calculation</translation>
    </message>
    <message>
        <source>Исходные данные</source>
        <translation>Input</translation>
    </message>
    <message>
        <source>Результаты</source>
        <translation>Results</translation>
    </message>
    <message>
        <source>График</source>
        <translation>Plot</translation>
    </message>
    <message>
        <source>Журнал расчёта</source>
        <translation>Run log</translation>
    </message>
</context>
<context>
    <name>Widget</name>
    <message>
        <source>Kalkora</source>
        <translation>Kalkora</translation>
    </message>
    <message>
        <source>Ввод данных</source>
        <translation>Input</translation>
    </message>
    <message>
        <source>Исходная функция</source>
        <translation>Function</translation>
    </message>
    <message>
        <source>f(x) = </source>
        <translation>f(x) = </translation>
    </message>
    <message>
        <source>n = </source>
        <translation>n = </translation>
    </message>
    <message>
        <source>Выход</source>
        <translation>Quit</translation>
    </message>
    <message>
        <source>Другие параметры</source>
        <translation>Parameters</translation>
    </message>
    <message>
        <source>X* = </source>
        <translation>X* = </translation>
    </message>
    <message>
        <source>x2 = </source>
        <translation>x2 = </translation>
    </message>
    <message>
        <source>h1 = </source>
        <translation>h1 = </translation>
    </message>
    <message>
        <source>h2 = </source>
        <translation>h2 = </translation>
    </message>
    <message>
        <source>Метод прямоугольников</source>
        <translation>Rectangle rule</translation>
    </message>
    <message>
        <source>Метод трапеций</source>
        <translation>Trapezoidal rule</translation>
    </message>
    <message>
        <source>Метод Симпсона</source>
        <translation>Simpson&apos;s rule</translation>
    </message>
    <message>
        <source>Справка</source>
        <translation>Help</translation>
    </message>
    <message>
        <source>Решаемая задача</source>
        <translation>Task</translation>
    </message>
    <message>
        <source>Интерполяция</source>
        <translation>Interpolation</translation>
    </message>
    <message>
        <source>Кубический сплайн</source>
        <translation>Cubic spline</translation>
    </message>
    <message>
        <source>МНК-аппроксимация</source>
        <translation>Least squares</translation>
    </message>
    <message>
        <source>Дифференцирование</source>
        <translation>Differentiation</translation>
    </message>
    <message>
        <source>Интегрирование</source>
        <translation>Integration</translation>
    </message>
    <message>
        <source>Расчет</source>
        <translation>Calculate</translation>
    </message>
    <message>
        <source>Очистить</source>
        <translation>Clear</translation>
    </message>
    <message>
        <source>Результат</source>
        <translation>Result</translation>
    </message>
    <message>
        <source>Решение</source>
        <translation>Solution</translation>
    </message>
    <message>
        <source>L(x) = </source>
        <translation>L(x) = </translation>
    </message>
    <message>
        <source>N(x) = </source>
        <translation>N(x) = </translation>
    </message>
    <message>
        <source>Погрешность</source>
        <translation>Error</translation>
    </message>
    <message>
        <source>ε1 = </source>
        <translation>ε1 = </translation>
    </message>
    <message>
        <source>ε2 = </source>
        <translation>ε2 = </translation>
    </message>
    <message>
        <source>%1, столбец %2</source>
        <translation>%1, column %2</translation>
    </message>
    <message>
        <source>График</source>
        <translation>Plot</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>нет кривых</source>
        <translation>no curves</translation>
    </message>
    <message>
        <source>%1 на отрезке [%2; %3]</source>
        <translation>%1 over [%2, %3]</translation>
    </message>
    <message>
        <source>Сохранить график…</source>
        <translation>Save Plot…</translation>
    </message>
    <message>
        <source>Копировать график</source>
        <translation>Copy Plot</translation>
    </message>
    <message>
        <source>Показать весь график</source>
        <translation>Show Whole Plot</translation>
    </message>
    <message>
        <source>Сохранить график</source>
        <translation>Save Plot</translation>
    </message>
    <message>
        <source>Изображение PNG (*.png);;Рисунок SVG (*.svg);;Документ PDF (*.pdf)</source>
        <translation>PNG image (*.png);;SVG drawing (*.svg);;PDF document (*.pdf)</translation>
    </message>
    <message>
        <source>такой тип файла не поддерживается</source>
        <translation>this type of file is not supported</translation>
    </message>
    <message>
        <source>Ошибка</source>
        <translation>Error</translation>
    </message>
    <message>
        <source>Не удалось сохранить график в файл %1: %2</source>
        <translation>Could not save the plot to the file %1: %2</translation>
    </message>
    <message>
        <source>Для ввода функции f(x) необходимо заполнить соответствующее текстовое поле. Вводимый текст должен являться корректным математическим выражением и может содержать только латинские буквы, цифры, круглые скобки, знаки арифметических операций (+ - * / ^), десятичные разделители (.), знаки экспоненты (e E) и пробелы. Названия функций, переменных и констант должны начинаться с латинских букв, но могут содержать и цифры. При записи вещественных чисел обязательно указывать целую часть (0.1 - корректно, .1 - некорректно). Используемые переменные должны быть известны (в выражении для f(x) можно использовать только переменную x). Если поле не заполнено, функция считается тождественно равной 0.

Cписок доступных функций и констант:
sin(x)  cos(x)  tg(x)  ctg(x)  arcsin(x)  arccos(x)  arctg(x)  arcctg(x)  exp(x)  ln(x)  log10(x)  log2(x)  abs(x)  sqrt(x)  sinh(x)  cosh(x)  pi

Примеры корректных выражений:
sin(2*pi*x)*exp(-4*pi^2*x)
0.5 * (1. + 0.2 - 1e-1)
log10(3) - ln(3) / ln(10)
</source>
        <translation>To enter the function f(x), fill in its text field. The text must be a correct mathematical expression and may contain only Latin letters, digits, round brackets, the arithmetic operators (+ - * / ^), decimal points (.), exponent signs (e E) and blanks. Names of functions, variables and constants must begin with a Latin letter but may also contain digits. A real number must be written with its integer part (0.1 is correct, .1 is not). Every variable used must be known (the expression for f(x) may use only the variable x). If the field is empty, the function is taken to be identically 0.

Functions and constants available:
sin(x)  cos(x)  tg(x)  ctg(x)  arcsin(x)  arccos(x)  arctg(x)  arcctg(x)  exp(x)  ln(x)  log10(x)  log2(x)  abs(x)  sqrt(x)  sinh(x)  cosh(x)  pi

Examples of correct expressions:
sin(2*pi*x)*exp(-4*pi^2*x)
0.5 * (1. + 0.2 - 1e-1)
log10(3) - ln(3) / ln(10)
</translation>
    </message>
    <message>
        <source>ru_RU</source>
        <comment>the locale of the numbers in the window</comment>
        <translation>en_US</translation>
    </message>
    <message>
        <source>Не удалось открыть файл %1 на запись.</source>
        <translation>Could not open the file %1 for writing.</translation>
    </message>
    <message>
        <source>Недостаточно памяти</source>
        <translation>Not enough memory</translation>
    </message>
    <message>
        <source>f(x)</source>
        <translation>f(x)</translation>
    </message>
    <message>
        <source>Степень интерполяционного полинома</source>
        <translation>Degree of the interpolation polynomial</translation>
    </message>
    <message>
        <source>Полином Лагранжа</source>
        <translation>Lagrange polynomial</translation>
    </message>
    <message>
        <source>Полином Ньютона</source>
        <translation>Newton polynomial</translation>
    </message>
    <message>
        <source>ε(X*) = </source>
        <translation>ε(X*) = </translation>
    </message>
    <message>
        <source>Погрешность интерполяции в точке X*</source>
        <translation>Interpolation error at X*</translation>
    </message>
    <message>
        <source>S(x):</source>
        <translation>S(x):</translation>
    </message>
    <message>
        <source>S(X*) = </source>
        <translation>S(X*) = </translation>
    </message>
    <message>
        <source>Значение сплайна в точке X*</source>
        <translation>Value of the spline at X*</translation>
    </message>
    <message>
        <source>P%1(x) = </source>
        <translation>P%1(x) = </translation>
    </message>
    <message>
        <source>Приближающий многочлен 1-ой степени</source>
        <translation>Approximating polynomial of degree 1</translation>
    </message>
    <message>
        <source>Приближающий многочлен 2-ой степени</source>
        <translation>Approximating polynomial of degree 2</translation>
    </message>
    <message>
        <source>ε%1 = </source>
        <translation>ε%1 = </translation>
    </message>
    <message>
        <source>Сумма квадратов ошибок для многочлена P1(x)</source>
        <translation>Sum of squared errors of P1(x)</translation>
    </message>
    <message>
        <source>Сумма квадратов ошибок для многочлена P2(x)</source>
        <translation>Sum of squared errors of P2(x)</translation>
    </message>
    <message>
        <source>f&apos;(X*) = </source>
        <translation>f&apos;(X*) = </translation>
    </message>
    <message>
        <source>Значение 1-ой производной в точке X*</source>
        <translation>Value of the first derivative at X*</translation>
    </message>
    <message>
        <source>f&apos;&apos;(X*) = </source>
        <translation>f&apos;&apos;(X*) = </translation>
    </message>
    <message>
        <source>Значение 2-ой производной в точке X*</source>
        <translation>Value of the second derivative at X*</translation>
    </message>
    <message>
        <source>x%1 = </source>
        <translation>x%1 = </translation>
    </message>
    <message>
        <source>h%1 = </source>
        <translation>h%1 = </translation>
    </message>
    <message>
        <source>Ans(h%1) = </source>
        <translation>Ans(h%1) = </translation>
    </message>
    <message>
        <source>Значение интеграла, посчитанного с шагом h1</source>
        <translation>Integral computed with the step h1</translation>
    </message>
    <message>
        <source>Значение интеграла, посчитанного с шагом h2</source>
        <translation>Integral computed with the step h2</translation>
    </message>
    <message>
        <source>ε = </source>
        <translation>ε = </translation>
    </message>
    <message>
        <source>Погрешность, вычисленная методом Рунге-Ромберга</source>
        <translation>Error estimated by the Runge–Romberg rule</translation>
    </message>
    <message>
        <source>x</source>
        <translation>x</translation>
    </message>
    <message>
        <source>N(x)</source>
        <translation>N(x)</translation>
    </message>
    <message>
        <source>N&apos;(x)</source>
        <translation>N&apos;(x)</translation>
    </message>
    <message>
        <source>N&apos;&apos;(x)</source>
        <translation>N&apos;&apos;(x)</translation>
    </message>
    <message>
        <source>P1(x)</source>
        <translation>P1(x)</translation>
    </message>
    <message>
        <source>P2(x)</source>
        <translation>P2(x)</translation>
    </message>
    <message>
        <source>S(x)</source>
        <translation>S(x)</translation>
    </message>
    <message>
        <source>Неправильный формат ввода выражения</source>
        <translation>The expression is not written correctly</translation>
    </message>
    <message>
        <source>Значение выражения для заданных аргументов не определено либо слишком велико</source>
        <translation>The value of the expression is undefined or too large for the given arguments</translation>
    </message>
    <message>
        <source>Неизвестная переменная: %1</source>
        <translation>Unknown variable: %1</translation>
    </message>
    <message>
        <source>Все точки, в которых задана исходная функция, должны быть различными</source>
        <translation>All points at which the function is given must be different</translation>
    </message>
    <message>
        <source>Значение сплайна в точке x = %1 не определено</source>
        <translation>The spline is not defined at x = %1</translation>
    </message>
    <message>
        <source>Матрица системы является вырожденной</source>
        <translation>The matrix of the system is singular</translation>
    </message>
    <message>
        <source>Матрица системы не является трехдиагональной</source>
        <translation>The matrix of the system is not tridiagonal</translation>
    </message>
    <message>
        <source>Неизвестная ошибка</source>
        <translation>Unknown error</translation>
    </message>
    <message>
        <source>Сообщение</source>
        <translation>Message</translation>
    </message>
    <message>
        <source>Расчет завершен</source>
        <translation>Calculation complete</translation>
    </message>
    <message>
        <source>Не удалось полностью записать журнал расчета в файл %1: %2</source>
        <translation>Could not write the whole run log to the file %1: %2</translation>
    </message>
    <message>
        <source>Отчёт готовится…</source>
        <translation>Preparing the report…</translation>
    </message>
    <message>
        <source>Отмена</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>Сохранить отчёт…</source>
        <translation>Save Report…</translation>
    </message>
    <message>
        <source>Печать отчёта…</source>
        <translation>Print Report…</translation>
    </message>
    <message>
        <source>Открыть журнал расчётов</source>
        <translation>Open Run Log</translation>
    </message>
    <message>
        <source>Не удалось открыть журнал расчётов %1</source>
        <translation>Could not open the run log %1</translation>
    </message>
    <message>
        <source>Метод</source>
        <translation>Rule</translation>
    </message>
    <message>
        <source>Сохранить отчёт</source>
        <translation>Save Report</translation>
    </message>
    <message>
        <source>Документ PDF (*.pdf);;Страница HTML (*.html)</source>
        <translation>PDF document (*.pdf);;HTML page (*.html)</translation>
    </message>
    <message>
        <source>Не удалось сохранить отчёт в файл %1: %2</source>
        <translation>Could not save the report to the file %1: %2</translation>
    </message>
</context>
</TS>
