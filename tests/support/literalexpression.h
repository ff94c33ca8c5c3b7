#pragma once

#include "core/expression.h"

#include <ostream>

/// The rules of TExpression followed to the letter, by recursion and with copies of the texts: slow and of limited
/// depth, but plain. Its results are what TExpression is compared with.
///
/// A scan that would never end is recognised by its state coming back: it starts over as it started over before. What
/// waits for such a scan would never end either: the call is invalid and yields 0.0.

struct TLiteralResult
{
    double value = 0.0;
    bool valid = false;
};

/// Whether both have the same flag and, bit for bit, the same value; any NaN equals any other.
bool operator==(const TLiteralResult& one, const TLiteralResult& other);
void PrintTo(const TLiteralResult& result, std::ostream* stream);

/// `variables` stand in the order of their substitution.
TLiteralResult Literal_Evaluate(const QString& text, const std::vector<TExpression::TVariable>& variables);

// Its steps

QString Literal_Working_Text(const QString& text);
QString Literal_Substituted(QString working_text, const TExpression::TVariable& variable);

/// `is_endless` (may be null) becomes true where the scan would never end and is left alone elsewhere.
TLiteralResult Literal_Process_Expression(const QString& text, bool* is_endless = nullptr);
TLiteralResult Literal_Process_Function(const QString& text, int* function_length);
double Literal_Apply_Expression(std::stack<double>* number_stack, std::stack<int>* oper_stack);
int Literal_Operator_Precedence(int oper);
int Literal_Find_Closing_Brace(const QString& text, int start);
