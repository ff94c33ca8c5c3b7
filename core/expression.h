#pragma once

#include <QString>

#include <stack>
#include <vector>

/// Turns the text of an uncertainty expression, "SUMSQ(0.3, L*A)/2", into a number.
///
/// The text knows named variables, the binary operators + - * / ^ (all of them associate to the left), parentheses and
/// the functions SQRT(x) and SUMSQ(a,b,...), the root of a sum of squares. Case and white space carry no meaning.
/// Arithmetic is that of IEEE doubles: 1/0 is infinite, SQRT(-4) is not a number, and both are valid.
///
/// A text that is no expression yields 0.0 and a flag that is false; nothing throws. Every evaluation ends, in a time
/// linear in the text's length and whatever its nesting (patterns as names apart). Where the rules would lead round for
/// ever - a parenthesis that its piece does not close, before a valid text - the whole text is invalid. Evaluations
/// leave the object unchanged and may run side by side.
class TExpression
{
public:
    struct TVariable
    {
        QString name;
        double value = 0.0;
    };

    // Variables

    /// Adds a variable behind those whose names are as long or longer; if the very name is there already, its value is
    /// replaced in place. False, and nothing changed, for an empty name.
    bool Add_Variable(const TVariable& variable);
    bool Add_Variable(const QString& name, const double& value);
    void Clear_Variables();

    /// The variables stand in the order of their substitution: longer names first, so that none is cut by a shorter
    /// one.
    int Variable_Count() const;
    TVariable Variable(int index) const;
    QString Variable_Name(int index) const;
    double Variable_Value(int index) const;

    /// The value of the variable with exactly this name, case included. Without one, 0.0 and `ok` (may be null) false.
    double Variable_Value(const QString& name, bool* ok) const;

    // Evaluation

    /// The value of `text` with every variable replaced by its value: names match whole words in any case, and the
    /// characters of regular expressions in a name act as such. Such a name is never met where its search would take
    /// too long: of more than 2000 characters, repetitions written out, with more than 4 look-aheads or 32 anchors, or
    /// with unlimited repetitions in a long text.
    /// A text that such names make longer than 4 million characters is invalid. `ok` may be null.
    double Evaluate(const QString& text, bool* ok) const;

    // Steps of the evaluation

    /// The value of a text that holds neither white space nor variables. `valid` may be null.
    double Process_Expression(const QString& text, bool* valid) const;

    /// The value of the function at the beginning of `text`; `function_length` becomes the position of its closing
    /// parenthesis and is left untouched where no function stands. An opening parenthesis right behind the function's
    /// own one is not counted: the argument of "SQRT((1+2)*3)" is "(1+2".
    ///
    /// A sum of squares is valid if its last part is; an invalid part contributes 0, and the root of the sum is
    /// returned either way.
    double Process_Function(const QString& text, int* function_length, bool* valid) const;

    /// Takes one operator and its two operands from the stacks and returns the result, which is not pushed.
    double Apply_Expression(std::stack<double>* number_stack, std::stack<int>* oper_stack) const;

    /// 1 for + and -, 2 for * and /, 3 for ^ and 0 for every other character code. The spelling is meant.
    int Operator_Precidence(int oper) const;

    /// The position from `start` on where a parenthesis closes that was not opened in between; -1 if there is none. An
    /// opening parenthesis exactly at `start` is not counted, so that its own partner is found.
    int Find_Closing_Brace(const QString& text, int start) const;

private:
    std::vector<TVariable> d_variables;
};
