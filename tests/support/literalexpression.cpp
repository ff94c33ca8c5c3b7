#include "tests/support/literalexpression.h"

#include <QRegExp>
#include <QStringList>

#include <algorithm>
#include <cmath>

namespace {

/// Thrown by a scan that would go round for ever.
struct TEndless
{};

TLiteralResult Process_Expression(const QString& text);
TLiteralResult Process_Function(const QString& text, int* function_length);

class TLiteralScan
{
public:
    explicit TLiteralScan(const QString& text) : d_text(text) {}

    TLiteralResult Run();

private:
    // Each returns false where the scan ends as invalid.
    bool Step();
    bool Group();
    bool Operator(int oper);
    bool Function();
    bool Last_Operand();

    TLiteralResult Completed();
    bool Convert(int end);
    void Start_Over();

    /// What decides how a scan goes on where it starts over. The numbers do not: whatever their values, the same steps
    /// follow.
    struct TState
    {
        int start;
        std::size_t number_count;
        std::stack<int> oper_stack;

        bool operator==(const TState& other) const
        {
            return start == other.start && number_count == other.number_count && oper_stack == other.oper_stack;
        }
    };

    const QString d_text;
    int d_position = 0;
    int d_start = 0;
    bool d_have_value = false;
    double d_pending_value = 0.0;
    std::vector<TState> d_former_states;
    std::stack<double> d_number_stack;
    std::stack<int> d_oper_stack;
};

TLiteralResult TLiteralScan::Run()
{
    while (d_position < d_text.length()) {
        if (!Step()) {
            return TLiteralResult();
        }
    }
    return Last_Operand() ? Completed() : TLiteralResult();
}

bool TLiteralScan::Step()
{
    const int code = d_text.at(d_position).unicode();

    if ((code >= '0' && code <= '9') || code == '.') {
        ++d_position;
        return true;
    }
    switch (code) {
    case '(':
        return Group();
    case ')':
        return false;
    case '*':
    case '+':
    case '-':
    case '/':
    case '^':
        return Operator(code);
    default:
        return Function();
    }
}

bool TLiteralScan::Group()
{
    const int close = Literal_Find_Closing_Brace(d_text, d_position);
    const TLiteralResult result = Process_Expression(d_text.mid(d_position + 1, close - d_position - 1));

    if (!result.valid) {
        return false;
    }
    d_pending_value = result.value;
    d_have_value = true;
    d_position = close + 1;
    if (d_position == 0) {
        Start_Over();
    }
    return true;
}

bool TLiteralScan::Operator(int oper)
{
    if (d_position == 0) {
        d_position = 1;
        return true;
    }
    if (d_have_value) {
        d_number_stack.push(d_pending_value);
    } else if (!Convert(d_position)) {
        return false;
    }
    ++d_position;
    while (!d_oper_stack.empty() &&
           Literal_Operator_Precedence(d_oper_stack.top()) >= Literal_Operator_Precedence(oper)) {
        d_number_stack.push(Literal_Apply_Expression(&d_number_stack, &d_oper_stack));
    }
    d_oper_stack.push(oper);
    d_start = d_position;
    d_have_value = false;
    return true;
}

bool TLiteralScan::Function()
{
    int length = 0;
    const TLiteralResult result = Process_Function(d_text.mid(d_position), &length);

    if (!result.valid) {
        return false;
    }
    d_pending_value = result.value;
    d_have_value = true;
    d_position += length + 1;
    return true;
}

bool TLiteralScan::Last_Operand()
{
    if (d_have_value) {
        d_number_stack.push(d_pending_value);
        return true;
    }
    return d_start >= d_text.length() || Convert(d_text.length());
}

TLiteralResult TLiteralScan::Completed()
{
    if (d_number_stack.size() != d_oper_stack.size() + 1) {
        return TLiteralResult();
    }
    double result = d_number_stack.top();

    while (!d_oper_stack.empty()) {
        result = Literal_Apply_Expression(&d_number_stack, &d_oper_stack);
        d_number_stack.push(result);
    }
    return {result, true};
}

/// Pushes the literal between the start and `end`.
bool TLiteralScan::Convert(int end)
{
    bool ok = false;

    d_number_stack.push(d_text.mid(d_start, end - d_start).toDouble(&ok));
    return ok;
}

/// Ends the scan where it starts over in a state in which it started over before.
void TLiteralScan::Start_Over()
{
    const TState state = {d_start, d_number_stack.size(), d_oper_stack};

    if (std::find(d_former_states.begin(), d_former_states.end(), state) != d_former_states.end()) {
        throw TEndless();
    }
    d_former_states.push_back(state);
}

TLiteralResult Square_Root(const QString& argument)
{
    const TLiteralResult result = Process_Expression(argument);

    return {std::sqrt(result.value), result.valid};
}

TLiteralResult Sum_Of_Squares(const QString& argument)
{
    TLiteralResult result;
    double sum = 0.0;

    for (const QString& part : argument.split(',', Qt::KeepEmptyParts)) {
        result = Process_Expression(part);
        sum += result.value * result.value;
    }
    return {std::sqrt(sum), result.valid};
}

TLiteralResult Process_Expression(const QString& text)
{
    return TLiteralScan(text).Run();
}

TLiteralResult Process_Function(const QString& text, int* function_length)
{
    const bool is_sum = text.startsWith(QString("SUMSQ("), Qt::CaseInsensitive);

    if (!is_sum && !text.startsWith(QString("SQRT("), Qt::CaseInsensitive)) {
        return TLiteralResult();
    }
    const int start = is_sum ? 6 : 5;
    const int close = Literal_Find_Closing_Brace(text, start);

    if (close < 0) {
        return TLiteralResult();
    }
    *function_length = close;
    const QString argument = text.mid(start, close - start);

    return is_sum ? Sum_Of_Squares(argument) : Square_Root(argument);
}

} // namespace

bool operator==(const TLiteralResult& one, const TLiteralResult& other)
{
    const bool both_nan = std::isnan(one.value) && std::isnan(other.value);
    const bool same_bits = one.value == other.value && std::signbit(one.value) == std::signbit(other.value);

    return (both_nan || same_bits) && one.valid == other.valid;
}

void PrintTo(const TLiteralResult& result, std::ostream* stream)
{
    *stream << std::hexfloat << result.value << std::defaultfloat << " (" << result.value
            << (result.valid ? "), valid" : "), invalid");
}

QString Literal_Working_Text(const QString& text)
{
    return text.simplified().toUpper().remove(QChar(32), Qt::CaseSensitive);
}

QString Literal_Substituted(QString working_text, const TExpression::TVariable& variable)
{
    const QRegExp pattern(QString("(\\b%1\\b)").arg(variable.name.toUpper()));
    const QString format = variable.value < 0.0 ? "(%1)" : "%1";

    return working_text.replace(pattern, format.arg(variable.value, 0, 'f', 16));
}

TLiteralResult Literal_Evaluate(const QString& text, const std::vector<TExpression::TVariable>& variables)
{
    if (text.isEmpty()) {
        return TLiteralResult();
    }
    QString working_text = Literal_Working_Text(text);

    for (const TExpression::TVariable& variable : variables) {
        working_text = Literal_Substituted(working_text, variable);
    }
    return Literal_Process_Expression(working_text);
}

TLiteralResult Literal_Process_Expression(const QString& text, bool* is_endless)
{
    try {
        return Process_Expression(text);
    } catch (const TEndless&) {
        if (is_endless != nullptr) {
            *is_endless = true;
        }
        return TLiteralResult();
    }
}

TLiteralResult Literal_Process_Function(const QString& text, int* function_length)
{
    try {
        return Process_Function(text, function_length);
    } catch (const TEndless&) {
        return TLiteralResult();
    }
}

double Literal_Apply_Expression(std::stack<double>* number_stack, std::stack<int>* oper_stack)
{
    const int oper = oper_stack->top();
    oper_stack->pop();
    const double right = number_stack->top();
    number_stack->pop();
    const double left = number_stack->top();
    number_stack->pop();

    switch (oper) {
    case '-':
        return left - right;
    case '/':
        return left / right;
    case '^':
        return std::pow(left, right);
    case '*':
        return left * right;
    case '+':
        return left + right;
    default:
        return 0.0;
    }
}

int Literal_Operator_Precedence(int oper)
{
    if (oper == '+' || oper == '-') {
        return 1;
    }
    if (oper == '*' || oper == '/') {
        return 2;
    }
    return oper == '^' ? 3 : 0;
}

int Literal_Find_Closing_Brace(const QString& text, int start)
{
    int depth = 0;

    for (int position = start; position < text.length(); ++position) {
        const QChar character = text.at(position);

        if (character.unicode() >= 256) {
            continue;
        }
        if (character == '(' && position != start) {
            ++depth;
        } else if (character == ')' && --depth == -1) {
            return position;
        }
    }
    return -1;
}
