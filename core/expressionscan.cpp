#include "core/expressionscan.h"

#include <QVarLengthArray>

#include <algorithm>
#include <cmath>
#include <stack>

namespace {

constexpr int NOT_FOUND = -1;
constexpr int LOWEST_PRECEDENCE = 0;

/// Short ones need no memory of their own.
template <typename T, int size>
using TStack = std::stack<T, QVarLengthArray<T, size>>;

template <typename TAnyStack>
typename TAnyStack::value_type Popped(TAnyStack* stack)
{
    const typename TAnyStack::value_type top = stack->top();

    stack->pop();
    return top;
}

template <typename TAnyStack>
void Shrink(TAnyStack* stack, int size)
{
    while (stack->size() > size) {
        stack->pop();
    }
}

enum class TScanKind
{
    Expression,
    Open_Group,
    Square_Root,
    Sum_Of_Squares
};

/// The scan of one piece: the whole text, a group (an open one goes to the end of its piece), or (a part of) a
/// function's argument. Pieces are ranges of tokens.
struct TScan
{
    // The stack asks for one without arguments.
    explicit TScan(TScanKind scan_kind = TScanKind::Expression, int scan_begin = 0, int scan_end = 0,
                   int scan_close = 0)
        : kind(scan_kind), begin(scan_begin), end(scan_end), close(scan_close), position(begin), literal(begin)
    {}

    void Restart(int new_begin, int new_end);
    void Take_Value(double value, int closing_brace);
    double Function_Value(double argument) const;

    TScanKind kind;
    int begin;
    int end;
    int close; ///< where the group or function closes; the surrounding scan goes on behind it. None in an open group.
    int position;
    int literal;        ///< where the literal of the next operand begins
    int next_comma = 0; ///< number of the first comma that may end a part
    bool has_pending = false;
    double pending = 0.0; ///< the value of a group or function that has taken the literal's place
    double sum = 0.0;     ///< of the squares of the parts so far
    int numbers = 0;      ///< entries of the surrounding scans on the number stack
    int operators = 0;    ///< entries of the surrounding scans on the operator stack
};

void TScan::Restart(int new_begin, int new_end)
{
    begin = position = literal = new_begin;
    end = new_end;
    has_pending = false;
}

void TScan::Take_Value(double value, int closing_brace)
{
    pending = value;
    has_pending = true;
    position = closing_brace + 1;
}

double TScan::Function_Value(double argument) const
{
    switch (kind) {
    case TScanKind::Square_Root:
        return std::sqrt(argument);
    case TScanKind::Sum_Of_Squares:
        return std::sqrt(sum);
    default:
        return argument;
    }
}

/// Scans an expression from left to right with a stack for operands and one for operators. The scans around the
/// innermost one wait on a stack of their own, so that no depth of nesting exhausts the program's stack.
class TScanner
{
public:
    explicit TScanner(const TExpressionTokens& tokens) : d_tokens(tokens) {}

    TScanResult Expression();
    TScanResult Function();

private:
    TScanResult Run();
    void Take_Token(const TExpressionToken& token);

    void Begin_Scan(TScanKind kind, int begin, int end, int close);
    void Begin_Group();
    bool Begin_Function(int position, int end);
    bool Begin_Next_Part(double value);
    int Closing(int opening, int end) const;
    int End_Of_Part(int comma, int close) const;

    void Take_Operator(int oper);
    bool Push_Operand();
    bool Push_Literal(int begin, int end);
    void Reduce(int precedence);

    void Complete_Scan();
    void Give_Up();
    void End_Scan(TScanResult result);
    void Drop_Entries();

    const TExpressionTokens& d_tokens;
    TStack<TScan, 8> d_scans;
    TStack<double, 32> d_number_stack;
    TStack<int, 32> d_oper_stack;
    TScanResult d_result;
};

TScanResult TScanner::Expression()
{
    Begin_Scan(TScanKind::Expression, 0, d_tokens.Size(), d_tokens.Size());
    return Run();
}

TScanResult TScanner::Function()
{
    const bool has_function = d_tokens.Size() > 0 && Begin_Function(0, d_tokens.Size());

    return has_function ? Run() : TScanResult();
}

TScanResult TScanner::Run()
{
    while (!d_scans.empty()) {
        TScan& scan = d_scans.top();

        while (scan.position != scan.end && d_tokens.At(scan.position).kind == TExpressionToken::NUMBER) {
            ++scan.position;
        }
        if (scan.position == scan.end) {
            Complete_Scan();
        } else {
            Take_Token(d_tokens.At(scan.position));
        }
    }
    return d_result;
}

void TScanner::Take_Token(const TExpressionToken& token)
{
    if (token.kind == TExpressionToken::OPERATOR) {
        Take_Operator(token.oper);
    } else if (token.kind == TExpressionToken::OPEN_GROUP) {
        Begin_Group();
    } else if (!Begin_Function(d_scans.top().position, d_scans.top().end)) {
        End_Scan(TScanResult());
    }
}

void TScanner::Begin_Scan(TScanKind kind, int begin, int end, int close)
{
    TScan scan(kind, begin, end, close);

    scan.numbers = d_number_stack.size();
    scan.operators = d_oper_stack.size();
    d_scans.push(scan);
}

/// The token that closes the one at `opening`; NOT_FOUND if it lies behind the piece that ends at `end`.
int TScanner::Closing(int opening, int end) const
{
    const int closing = d_tokens.At(opening).closing;

    return closing < end ? closing : NOT_FOUND;
}

/// The group of a parenthesis without a partner in this piece is the rest of the piece.
void TScanner::Begin_Group()
{
    const TScan& scan = d_scans.top();
    const int begin = scan.position + 1;
    const int close = Closing(scan.position, scan.end);

    if (close == NOT_FOUND) {
        Begin_Scan(TScanKind::Open_Group, begin, scan.end, close);
    } else {
        Begin_Scan(TScanKind::Expression, begin, close, close);
    }
}

/// False if no function stands at `position`, in a piece that ends at `end`. A parenthesis right behind the function's
/// own one is not counted: what closes that one closes the function.
bool TScanner::Begin_Function(int position, int end)
{
    const TExpressionToken& function = d_tokens.At(position);
    const int argument = position + 1;

    if (function.kind != TExpressionToken::SUM_OF_SQUARES && function.kind != TExpressionToken::SQUARE_ROOT) {
        return false;
    }
    const bool has_group = argument < end && d_tokens.At(argument).kind == TExpressionToken::OPEN_GROUP;
    const int close = Closing(has_group ? argument : position, end);

    if (close == NOT_FOUND) {
        return false;
    }
    if (function.kind == TExpressionToken::SQUARE_ROOT) {
        Begin_Scan(TScanKind::Square_Root, argument, close, close);
    } else {
        Begin_Scan(TScanKind::Sum_Of_Squares, argument, End_Of_Part(function.commas_before, close), close);
        d_scans.top().next_comma = function.commas_before;
    }
    return true;
}

int TScanner::End_Of_Part(int comma, int close) const
{
    return comma < d_tokens.Comma_Count() ? std::min(d_tokens.Comma(comma), close) : close;
}

/// Goes on to the part behind the one that has just ended; false if the innermost scan has no further part.
bool TScanner::Begin_Next_Part(double value)
{
    TScan& scan = d_scans.top();

    if (scan.kind != TScanKind::Sum_Of_Squares) {
        return false;
    }
    scan.sum += value * value;
    if (scan.end == scan.close) {
        return false;
    }
    ++scan.next_comma;
    scan.Restart(scan.end + 1, End_Of_Part(scan.next_comma, scan.close));
    return true;
}

void TScanner::Take_Operator(int oper)
{
    TScan& scan = d_scans.top();

    if (scan.position == scan.begin) {
        ++scan.position; // The sign of the first literal.
        return;
    }
    if (!Push_Operand()) {
        End_Scan(TScanResult());
        return;
    }
    Reduce(Operator_Precedence(oper));
    d_oper_stack.push(oper);
    ++scan.position;
    scan.literal = scan.position;
    scan.has_pending = false;
}

/// False if the literal in front of the position is no number.
bool TScanner::Push_Operand()
{
    const TScan& scan = d_scans.top();

    if (!scan.has_pending) {
        return Push_Literal(scan.literal, scan.position);
    }
    d_number_stack.push(scan.pending);
    return true;
}

/// A literal is one number, with a sign at most. Two in a row make none: one of them is the value of a variable, which
/// has a point of its own, and digits that stand beside a variable touch it with a point.
bool TScanner::Push_Literal(int begin, int end)
{
    if (begin == end || end - begin > 2) {
        return false;
    }
    const TExpressionToken& first = d_tokens.At(begin);
    const TExpressionToken& last = d_tokens.At(end - 1);
    const bool has_sign = end - begin == 2;

    if (has_sign && first.oper != '-' && first.oper != '+') {
        return false;
    }
    d_number_stack.push(has_sign && first.oper == '-' ? -last.value : last.value);
    return last.is_valid;
}

/// Applies the operators of the innermost scan down to the first one that binds less than `precedence`. Equal ones are
/// applied: all operators associate to the left.
void TScanner::Reduce(int precedence)
{
    while (d_oper_stack.size() > d_scans.top().operators && Operator_Precedence(d_oper_stack.top()) >= precedence) {
        const double right = Popped(&d_number_stack);
        double& left = d_number_stack.top();

        left = Operator_Result(left, Popped(&d_oper_stack), right);
    }
}

void TScanner::Complete_Scan()
{
    const TScan& scan = d_scans.top();
    const bool has_operand = scan.has_pending || scan.literal < scan.end;

    // Without an operand the text is empty or ends with an operator.
    if (!has_operand || !Push_Operand()) {
        End_Scan(TScanResult());
        return;
    }
    if (scan.kind == TScanKind::Open_Group) {
        Give_Up();
        return;
    }
    Reduce(LOWEST_PRECEDENCE);
    End_Scan({d_number_stack.top(), true});
}

/// By the rules, the scan around a valid open group would start over from its beginning, meet the group again and go
/// round for ever, and the scans around it would wait for ever: none of them has a value.
void TScanner::Give_Up()
{
    d_scans = {};
    d_result = TScanResult();
}

/// Ends the innermost scan and hands its value to the one around it. An invalid result ends that one too, and so on up
/// to a sum of squares that has parts left.
void TScanner::End_Scan(TScanResult result)
{
    Drop_Entries();
    while (!Begin_Next_Part(result.value)) {
        const TScan ended = Popped(&d_scans);

        result.value = ended.Function_Value(result.value);
        if (d_scans.empty()) {
            d_result = result;
            return;
        }
        if (result.valid) {
            d_scans.top().Take_Value(result.value, ended.close);
            return;
        }
        result.value = 0.0;
        Drop_Entries();
    }
}

void TScanner::Drop_Entries()
{
    Shrink(&d_number_stack, d_scans.top().numbers);
    Shrink(&d_oper_stack, d_scans.top().operators);
}

} // namespace

TScanResult Scan_Expression(const TExpressionTokens& tokens)
{
    return TScanner(tokens).Expression();
}

TScanResult Scan_Function(const TExpressionTokens& tokens)
{
    return TScanner(tokens).Function();
}

int Operator_Precedence(int oper)
{
    switch (oper) {
    case '+':
    case '-':
        return 1;
    case '*':
    case '/':
        return 2;
    case '^':
        return 3;
    default:
        return 0;
    }
}

double Operator_Result(double left, int oper, double right)
{
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
