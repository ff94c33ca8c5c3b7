#include "core/expression.h"

#include "core/assertion.h"
#include "core/number.h"

#include <QRegExp>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace {

constexpr int NOT_FOUND = -1;
constexpr int VALUE_DECIMALS = 16;
constexpr int LOWEST_PRECEDENCE = 0;
constexpr double LARGEST_PATTERN = 2000.0;
// In steps of the pattern: about a second.
constexpr double LONGEST_SEARCH = 4e8;
constexpr double STEPS_OF_ONE_WAY = 4.0;
constexpr int LARGEST_GROWN_TEXT = 4'000'000;
const QLatin1String SUM_OF_SQUARES("SUMSQ(");
const QLatin1String SQUARE_ROOT("SQRT(");

void Set_Flag(bool* flag, bool value)
{
    if (flag != nullptr) {
        *flag = value;
    }
}

// Substitution of variables

QString Working_Text(const QString& text)
{
    return text.simplified().toUpper().remove(QLatin1Char(' '), Qt::CaseSensitive);
}

/// Whether `name` matches nothing but itself when it stands in a regular expression.
bool Is_Plain(const QString& name)
{
    static const QString signs = R"(\^$.|?*+()[]{})";

    return std::none_of(name.cbegin(), name.cend(), [](QChar character) { return signs.contains(character); });
}

/// The number of characters in `pattern` when its repetitions ("A{3}") are written out, at worst one inside the other.
double Written_Out_Size(const QString& pattern)
{
    static const QRegularExpression repetition(QStringLiteral("[{,](\\d+)"));
    QRegularExpressionMatchIterator counts = repetition.globalMatch(pattern);
    double size = pattern.size();

    while (counts.hasNext()) {
        size *= std::max(1.0, counts.next().captured(1).toDouble());
    }
    return size;
}

/// How often a character stands in a row at most.
double Longest_Run(const QString& text)
{
    int longest = 0;
    int run = 0;

    for (int position = 0; position < text.size(); ++position) {
        run = position > 0 && text.at(position) == text.at(position - 1) ? run + 1 : 1;
        longest = std::max(longest, run);
    }
    return longest;
}

/// How far into `text` the search for `pattern` may go from one position on: as far as the pattern itself unless it
/// repeats something without limit; a letter ("A+") at least must follow itself.
double Reach(const QString& pattern, double size, const QString& text)
{
    static const QRegularExpression unlimited(QStringLiteral("[*+]|,\\}"));
    static const QRegularExpression any(QStringLiteral("(?<!\\w)[*+]|,\\}|\\\\"),
                                        QRegularExpression::UseUnicodePropertiesOption);

    if (!pattern.contains(unlimited)) {
        return size;
    }
    return pattern.contains(any) ? text.size() : std::min<double>(text.size(), size * Longest_Run(text));
}

/// The steps that the search for `pattern` may take in `text`. Without alternatives it goes one way from each position,
/// otherwise the whole pattern may be at work at once.
double Search_Steps(const QString& pattern, double size, const QString& text)
{
    static const QRegularExpression alternatives(QStringLiteral("[|?*+{\\\\]"));

    return (pattern.contains(alternatives) ? size : STEPS_OF_ONE_WAY) * Reach(pattern, size, text) * text.size();
}

/// QRegExp nests as deeply as its pattern and writes repetitions out: a huge one would exhaust stack or memory.
bool Is_Excessive(const QString& pattern, const QString& text)
{
    const double size = Written_Out_Size(pattern);

    return size > LARGEST_PATTERN || Search_Steps(pattern, size, text) > LONGEST_SEARCH;
}

/// The value in fixed notation, since the scan knows no exponents. A sign is read in front of an expression only; the
/// parentheses let a negative value follow an operator.
QString Value_Text(double value)
{
    const QString number = Fixed_Text(value, VALUE_DECIMALS);

    return value < 0.0 ? QString("(%1)").arg(number) : number;
}

/// `text` with every match replaced; nothing if that is longer than `limit`. QString::replace copies the whole text
/// anew for each two thousand matches and looks for the next word boundary in the copy; here the matches are those of
/// `text` as it came.
std::optional<QString> Replaced(const QString& text, const QRegExp& pattern, const QString& replacement, int limit)
{
    QString result;
    int copied = 0;
    int match = pattern.indexIn(text);

    while (match >= 0) {
        const int length = pattern.matchedLength();

        result += text.midRef(copied, match - copied);
        result += replacement;
        if (result.size() > limit) {
            return std::nullopt;
        }
        copied = match + length;
        match = pattern.indexIn(text, length > 0 ? copied : copied + 1);
    }
    return result += text.midRef(copied);
}

/// Nothing if the text becomes too long: a pattern that matches next to nothing is met between the characters of every
/// value again, and with a few of these the text would outgrow the memory.
std::optional<QString> Substituted(const QString& text, const TExpression::TVariable& variable)
{
    const QString name = variable.name.toUpper();
    const bool is_plain = Is_Plain(name);

    if (is_plain ? !text.contains(name) : Is_Excessive(name, text)) {
        return text;
    }
    return Replaced(text, QRegExp(QString("(\\b%1\\b)").arg(name)), Value_Text(variable.value),
                    is_plain ? std::numeric_limits<int>::max() : std::max(LARGEST_GROWN_TEXT, text.size()));
}

// Characters and operators

bool Is_Literal(int code)
{
    return (code >= '0' && code <= '9') || code == '.';
}

int Precedence(int oper)
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

double Operation(double left, int oper, double right)
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

template <typename TStack>
typename TStack::value_type Popped(TStack* stack)
{
    const typename TStack::value_type top = stack->top();

    stack->pop();
    return top;
}

template <typename T>
void Shrink(std::stack<T>* stack, std::size_t size)
{
    while (stack->size() > size) {
        stack->pop();
    }
}

double Applied(std::stack<double>* number_stack, std::stack<int>* oper_stack)
{
    const int oper = Popped(oper_stack);
    const double right = Popped(number_stack);
    const double left = Popped(number_stack);

    return Operation(left, oper, right);
}

// The marked text

/// A text together with the places that its scans look up, found in one pass. Pieces of it are ranges of positions.
class TMarkedText
{
public:
    explicit TMarkedText(const QString& text);

    int Size() const { return d_text.size(); }
    int Code_At(int position) const { return d_text.at(position).unicode(); }
    QStringRef Piece(int begin, int end) const { return d_text.midRef(begin, end - begin); }

    /// As TExpression::Find_Closing_Brace, in the piece that ends before `end`.
    int Closing_Brace(int start, int end) const;

    /// The first comma in a piece; `end` if it has none.
    int Comma(int begin, int end) const;

private:
    /// What lies at or behind a position: the first parenthesis that closes none opened from there on, and the first
    /// comma.
    struct TMark
    {
        int closing = NOT_FOUND;
        int comma = NOT_FOUND;
    };

    const TMark& Mark(int position) const { return d_marks[static_cast<std::size_t>(position)]; }
    int Closing_At(int position) const;

    const QString& d_text;
    std::vector<TMark> d_marks;
};

TMarkedText::TMarkedText(const QString& text) : d_text(text), d_marks(static_cast<std::size_t>(text.size()) + 1)
{
    for (int position = Size() - 1; position >= 0; --position) {
        TMark& mark = d_marks[static_cast<std::size_t>(position)];

        mark.closing = Closing_At(position);
        mark.comma = Code_At(position) == ',' ? position : Mark(position + 1).comma;
    }
}

/// Relies on the marks behind `position`.
int TMarkedText::Closing_At(int position) const
{
    const int next = Mark(position + 1).closing;

    switch (Code_At(position)) {
    case ')':
        return position;
    case '(':
        return next == NOT_FOUND ? NOT_FOUND : Mark(next + 1).closing;
    default:
        return next;
    }
}

int TMarkedText::Closing_Brace(int start, int end) const
{
    if (start < 0 || start >= end) {
        return NOT_FOUND;
    }
    const int closing = Mark(Code_At(start) == '(' ? start + 1 : start).closing;

    return closing < end ? closing : NOT_FOUND;
}

int TMarkedText::Comma(int begin, int end) const
{
    const int comma = Mark(begin).comma;

    return comma == NOT_FOUND ? end : std::min(comma, end);
}

// The scanner

struct TResult
{
    double value = 0.0;
    bool valid = false;
};

enum class TScanKind
{
    Expression,
    Open_Group,
    Square_Root,
    Sum_Of_Squares
};

/// The scan of one piece: the whole text, a group (an open one goes to the end of its piece), or (a part of) a
/// function's argument.
struct TScan
{
    TScan(TScanKind scan_kind, int scan_begin, int scan_end, int scan_close)
        : kind(scan_kind), begin(scan_begin), end(scan_end), close(scan_close)
    {}

    void Restart(int new_begin, int new_end);
    void Take_Value(double value, int closing_brace);
    double Function_Value(double argument) const;

    TScanKind kind;
    int begin;
    int end;
    int close; ///< where the group or function closes; the surrounding scan goes on behind it. None in an open group.
    int position = begin;
    int literal = begin;           ///< where the literal of the next operand begins
    std::optional<double> pending; ///< the value of a group or function that has taken the literal's place
    double sum = 0.0;              ///< of the squares of the parts so far
    std::size_t numbers = 0;       ///< entries of the surrounding scans on the number stack
    std::size_t operators = 0;     ///< entries of the surrounding scans on the operator stack
};

void TScan::Restart(int new_begin, int new_end)
{
    begin = position = literal = new_begin;
    end = new_end;
    pending.reset();
}

void TScan::Take_Value(double value, int closing_brace)
{
    pending = value;
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

/// Scans a text from left to right with a stack for operands and one for operators. The scans around the innermost one
/// wait on a stack of their own, so that no depth of nesting exhausts the program's stack.
class TScanner
{
public:
    explicit TScanner(const QString& text) : d_text(text) {}

    TResult Expression();
    /// `length` is set as soon as the function's closing parenthesis is known.
    TResult Function(int* length);

private:
    TResult Run();
    void Step();

    void Begin_Scan(TScanKind kind, int begin, int end, int close);
    void Begin_Group();
    bool Begin_Function(int position, int end);
    bool Begin_Next_Part(double value);

    void Take_Operator(int oper);
    bool Push_Operand();
    void Reduce(int precedence);

    void Complete_Scan();
    void Give_Up();
    void End_Scan(TResult result);
    void Drop_Entries();

    const TMarkedText d_text;
    std::stack<TScan, std::vector<TScan>> d_scans;
    std::stack<double> d_number_stack;
    std::stack<int> d_oper_stack;
    TResult d_result;
};

TResult TScanner::Expression()
{
    Begin_Scan(TScanKind::Expression, 0, d_text.Size(), d_text.Size());
    return Run();
}

TResult TScanner::Function(int* length)
{
    if (!Begin_Function(0, d_text.Size())) {
        return TResult();
    }
    *length = d_scans.top().close;
    return Run();
}

TResult TScanner::Run()
{
    while (!d_scans.empty()) {
        Step();
    }
    return d_result;
}

void TScanner::Step()
{
    TScan& scan = d_scans.top();

    if (scan.position == scan.end) {
        Complete_Scan();
        return;
    }
    const int code = d_text.Code_At(scan.position);

    if (Is_Literal(code)) {
        ++scan.position;
    } else if (Precedence(code) > 0) {
        Take_Operator(code);
    } else if (code == '(') {
        Begin_Group();
    } else if (code == ')' || !Begin_Function(scan.position, scan.end)) {
        End_Scan(TResult());
    }
}

void TScanner::Begin_Scan(TScanKind kind, int begin, int end, int close)
{
    TScan scan(kind, begin, end, close);

    scan.numbers = d_number_stack.size();
    scan.operators = d_oper_stack.size();
    d_scans.push(scan);
}

/// The group of a parenthesis without a partner in this piece is the rest of the piece.
void TScanner::Begin_Group()
{
    const TScan& scan = d_scans.top();
    const int close = d_text.Closing_Brace(scan.position, scan.end);

    if (close == NOT_FOUND) {
        Begin_Scan(TScanKind::Open_Group, scan.position + 1, scan.end, close);
    } else {
        Begin_Scan(TScanKind::Expression, scan.position + 1, close, close);
    }
}

bool TScanner::Begin_Function(int position, int end)
{
    const QStringRef text = d_text.Piece(position, end);
    const bool is_sum = text.startsWith(SUM_OF_SQUARES, Qt::CaseInsensitive);

    if (!is_sum && !text.startsWith(SQUARE_ROOT, Qt::CaseInsensitive)) {
        return false;
    }
    const int argument = position + (is_sum ? SUM_OF_SQUARES : SQUARE_ROOT).size();
    const int close = d_text.Closing_Brace(argument, end);

    if (close == NOT_FOUND) {
        return false;
    }
    if (is_sum) {
        Begin_Scan(TScanKind::Sum_Of_Squares, argument, d_text.Comma(argument, close), close);
    } else {
        Begin_Scan(TScanKind::Square_Root, argument, close, close);
    }
    return true;
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
    const int begin = scan.end + 1;
    scan.Restart(begin, d_text.Comma(begin, scan.close));
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
        End_Scan(TResult());
        return;
    }
    Reduce(Precedence(oper));
    d_oper_stack.push(oper);
    ++scan.position;
    scan.literal = scan.position;
    scan.pending.reset();
}

/// False if the literal in front of the position is no number.
bool TScanner::Push_Operand()
{
    const TScan& scan = d_scans.top();
    bool ok = true;

    d_number_stack.push(scan.pending ? *scan.pending : d_text.Piece(scan.literal, scan.position).toDouble(&ok));
    return ok;
}

/// Applies the operators of the innermost scan down to the first one that binds less than `precedence`. Equal ones are
/// applied: all operators associate to the left.
void TScanner::Reduce(int precedence)
{
    while (d_oper_stack.size() > d_scans.top().operators && Precedence(d_oper_stack.top()) >= precedence) {
        d_number_stack.push(Applied(&d_number_stack, &d_oper_stack));
    }
}

void TScanner::Complete_Scan()
{
    const TScan& scan = d_scans.top();
    const bool has_operand = scan.pending || scan.literal < scan.end;

    // Without an operand the text is empty or ends with an operator.
    if (!has_operand || !Push_Operand()) {
        End_Scan(TResult());
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
    d_result = TResult();
}

/// Ends the innermost scan and hands its value to the one around it. An invalid result ends that one too, and so on up
/// to a sum of squares that has parts left.
void TScanner::End_Scan(TResult result)
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
    if (text.isEmpty()) {
        Set_Flag(ok, false);
        return 0.0;
    }
    std::optional<QString> working_text = Working_Text(text);

    for (const TVariable& variable : d_variables) {
        working_text = Substituted(*working_text, variable);
        if (!working_text) {
            Set_Flag(ok, false);
            return 0.0;
        }
    }
    return Process_Expression(*working_text, ok);
}

// Steps of the evaluation

double TExpression::Process_Expression(const QString& text, bool* valid) const
{
    const TResult result = TScanner(text).Expression();

    Set_Flag(valid, result.valid);
    return result.value;
}

double TExpression::Process_Function(const QString& text, int* function_length, bool* valid) const
{
    NORVEXA_ASSERT(function_length);
    NORVEXA_ASSERT(valid);

    const TResult result = TScanner(text).Function(function_length);

    *valid = result.valid;
    return result.value;
}

double TExpression::Apply_Expression(std::stack<double>* number_stack, std::stack<int>* oper_stack) const
{
    NORVEXA_ASSERT(number_stack->size() > 1);
    NORVEXA_ASSERT_TEXT(!oper_stack->empty(), "oper_stack->size()");

    return Applied(number_stack, oper_stack);
}

int TExpression::Operator_Precidence(int oper) const
{
    return Precedence(oper);
}

int TExpression::Find_Closing_Brace(const QString& text, int start) const
{
    return TMarkedText(text).Closing_Brace(start, text.size());
}
