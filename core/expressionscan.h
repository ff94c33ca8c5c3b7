#pragma once

#include "core/expressiontokens.h"

/// What a scan of an expression comes to.
struct TScanResult
{
    double value = 0.0;
    bool valid = false;
};

/// The value of the expression that the tokens make up.
TScanResult Scan_Expression(const TExpressionTokens& tokens);

/// The value of the function that the tokens begin with; invalid where none stands. What follows it is not looked at.
TScanResult Scan_Function(const TExpressionTokens& tokens);

// Operators, by the codes of their characters

/// 1 for + and -, 2 for * and /, 3 for ^ and 0 for every other code.
int Operator_Precedence(int oper);

/// `left` and `right` under the operator; 0.0 for a code that is none.
double Operator_Result(double left, int oper, double right);
