#include "core/expression.h"

#include "core/assertion.h"
#include "core/characterblock.h"
#include "core/expressionpattern.h"
#include "core/expressionscan.h"
#include "core/expressiontokens.h"
#include "core/expressionwords.h"

#include <QVarLengthArray>

#include <algorithm>

namespace {

constexpr int NOT_FOUND = -1;

void Set_Flag(bool* flag, bool value)
{
    if (flag != nullptr) {
        *flag = value;
    }
}

/// Writes the character in capitals to `converted`, if it is no white space. Returns where the next one goes to; null
/// if it is not ASCII.
QChar* Convert_ASCII_Character(QChar character, QChar* converted)
{
    const ushort code = character.unicode();

    if (code >= 128) {
        return nullptr;
    }
    if (code <= ' ' && character.isSpace()) {
        return converted;
    }
    *converted = code >= 'a' && code <= 'z' ? QChar(code - ('a' - 'A')) : character;
    return converted + 1;
}

/// Writes `text` in capitals and without white space to `converted`, which has room for all of it. Returns its new
/// length; NOT_FOUND if it is not all ASCII.
int Convert_ASCII(const QString& text, QChar* const converted)
{
    const QChar* const characters = text.constData();
    QChar* next = converted;
    int position = 0;

    while (position < text.size()) {
        if (text.size() - position >= BLOCK_SIZE && All_Hold(Are_Printable(Block_At(characters + position)))) {
            const TCharacterBlock capitals = Capitals(Block_At(characters + position));

            Write_Block(capitals, next);
            next += BLOCK_SIZE;
            position += BLOCK_SIZE;
        } else {
            next = Convert_ASCII_Character(characters[position], next);
            ++position;
            if (next == nullptr) {
                return NOT_FOUND;
            }
        }
    }
    return static_cast<int>(next - converted);
}

/// Where the argument of the function at the beginning begins in its text; NOT_FOUND if no function stands there.
int Function_Argument(const TExpressionTokens& tokens)
{
    switch (tokens.Size() == 0 ? TExpressionToken::OTHER : tokens.At(0).kind) {
    case TExpressionToken::SUM_OF_SQUARES:
        return static_cast<int>(std::size("SUMSQ(")) - 1;
    case TExpressionToken::SQUARE_ROOT:
        return static_cast<int>(std::size("SQRT(")) - 1;
    default:
        return NOT_FOUND;
    }
}

TScanResult Scanned_Patterns(QStringView working_text, const std::vector<TExpression::TVariable>& variables)
{
    const std::optional<QString> text = Substituted_Patterns(working_text.toString(), variables);

    return text ? Scan_Expression(TExpressionTokens(*text)) : TScanResult();
}

TScanResult Evaluated_Working_Text(QStringView text, const std::vector<TExpression::TVariable>& variables)
{
    const TExpressionWords words(variables);

    return words.Are_Words() ? Scan_Expression(TExpressionTokens(text, words)) : Scanned_Patterns(text, variables);
}

TScanResult Evaluated(const QString& text, const std::vector<TExpression::TVariable>& variables)
{
    QVarLengthArray<QChar, 256> converted(text.size());
    const int length = Convert_ASCII(text, converted.data());

    if (length != NOT_FOUND) {
        return Evaluated_Working_Text(QStringView(converted.data(), length), variables);
    }
    return Evaluated_Working_Text(text.simplified().toUpper().remove(QLatin1Char(' '), Qt::CaseSensitive), variables);
}

} // namespace

// Variables

bool TExpression::Add_Variable(const TVariable& variable)
{
    if (variable.name.isEmpty()) {
        return false;
    }
    const auto same = std::find_if(d_variables.begin(), d_variables.end(),
                                   [&](const TVariable& entry) { return entry.name == variable.name; });

    if (same != d_variables.end()) {
        same->value = variable.value;
        return true;
    }
    const auto shorter = std::find_if(d_variables.begin(), d_variables.end(), [&](const TVariable& entry) {
        return entry.name.length() < variable.name.length();
    });

    d_variables.insert(shorter, variable);
    return true;
}

bool TExpression::Add_Variable(const QString& name, const double& value)
{
    return Add_Variable(TVariable{name, value});
}

void TExpression::Clear_Variables()
{
    d_variables.clear();
}

int TExpression::Variable_Count() const
{
    return static_cast<int>(d_variables.size());
}

TExpression::TVariable TExpression::Variable(int index) const
{
    NORVEXA_ASSERT(static_cast<unsigned int>(index) < d_variables.size());
    return d_variables[static_cast<unsigned int>(index)];
}

QString TExpression::Variable_Name(int index) const
{
    NORVEXA_ASSERT(static_cast<unsigned int>(index) < d_variables.size());
    return d_variables[static_cast<unsigned int>(index)].name;
}

double TExpression::Variable_Value(int index) const
{
    NORVEXA_ASSERT(static_cast<unsigned int>(index) < d_variables.size());
    return d_variables[static_cast<unsigned int>(index)].value;
}

double TExpression::Variable_Value(const QString& name, bool* ok) const
{
    const auto same = std::find_if(d_variables.begin(), d_variables.end(),
                                   [&](const TVariable& entry) { return entry.name == name; });
    const bool found = same != d_variables.end();

    Set_Flag(ok, found);
    return found ? same->value : 0.0;
}

// Evaluation

double TExpression::Evaluate(const QString& text, bool* ok) const
{
    // An empty text is no expression, whatever names would be met in it.
    const TScanResult result = text.isEmpty() ? TScanResult() : Evaluated(text, d_variables);

    Set_Flag(ok, result.valid);
    return result.value;
}

// Steps of the evaluation

double TExpression::Process_Expression(const QString& text, bool* valid) const
{
    const TScanResult result = Scan_Expression(TExpressionTokens(text));

    Set_Flag(valid, result.valid);
    return result.value;
}

double TExpression::Process_Function(const QString& text, int* function_length, bool* valid) const
{
    NORVEXA_ASSERT(function_length);
    NORVEXA_ASSERT(valid);

    const TExpressionTokens tokens(text);
    const TScanResult result = Scan_Function(tokens);
    const int argument = Function_Argument(tokens);
    const int close = argument == NOT_FOUND ? NOT_FOUND : Find_Closing_Brace(text, argument);

    if (close != NOT_FOUND) {
        *function_length = close;
    }
    *valid = result.valid;
    return result.value;
}

double TExpression::Apply_Expression(std::stack<double>* number_stack, std::stack<int>* oper_stack) const
{
    NORVEXA_ASSERT(number_stack->size() > 1);
    NORVEXA_ASSERT_TEXT(!oper_stack->empty(), "oper_stack->size()");

    const int oper = oper_stack->top();
    oper_stack->pop();
    const double right = number_stack->top();
    number_stack->pop();
    const double left = number_stack->top();
    number_stack->pop();

    return Operator_Result(left, oper, right);
}

int TExpression::Operator_Precidence(int oper) const
{
    return Operator_Precedence(oper);
}

int TExpression::Find_Closing_Brace(const QString& text, int start) const
{
    if (start < 0) {
        return NOT_FOUND;
    }
    int depth = 0;

    for (int position = start; position < text.size(); ++position) {
        if (text.at(position) == '(' && position != start) {
            ++depth;
        } else if (text.at(position) == ')' && --depth < 0) {
            return position;
        }
    }
    return NOT_FOUND;
}
