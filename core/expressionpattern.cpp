#include "core/expressionpattern.h"

#include "core/namesearch.h"
#include "core/number.h"

#include <QRegExp>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>

namespace {

constexpr int VALUE_DECIMALS = 16;
constexpr double LARGEST_PATTERN = 2000.0;
// In steps of the pattern: about a second.
constexpr double LONGEST_SEARCH = 4e8;
constexpr double STEPS_OF_ONE_WAY = 4.0;
constexpr int MOST_LOOK_AHEADS = 4;
constexpr int MOST_ANCHORS = 32;
constexpr int LARGEST_GROWN_TEXT = 4'000'000;

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

int Count_Of(QLatin1String sign, const QString& pattern)
{
    int count = 0;

    for (int found = pattern.indexOf(sign); found >= 0; found = pattern.indexOf(sign, found + sign.size())) {
        ++count;
    }
    return count;
}

int Look_Ahead_Count(const QString& pattern)
{
    return Count_Of(QLatin1String("(?="), pattern) + Count_Of(QLatin1String("(?!"), pattern);
}

int Anchor_Count(const QString& pattern)
{
    // The names come in capitals, so that \b is \B.
    return pattern.count('^') + pattern.count('$') + Count_Of(QLatin1String("\\B"), pattern);
}

/// QRegExp nests as deeply as its pattern and writes repetitions out: a huge one would exhaust stack or memory. So
/// would what matches nothing itself: with each further sign QRegExp takes twice the time and memory. What looks ahead
/// is searched for on its own at each step.
bool Is_Excessive(const QString& pattern, const QString& text)
{
    const double size = Written_Out_Size(pattern);
    const int look_aheads = Look_Ahead_Count(pattern);

    return size > LARGEST_PATTERN || look_aheads > MOST_LOOK_AHEADS || Anchor_Count(pattern) > MOST_ANCHORS ||
           Search_Steps(pattern, size, text) * std::pow(Reach(pattern, size, text), look_aheads) > LONGEST_SEARCH;
}

/// The value in fixed notation, since the scan knows no exponents. A sign is read in front of an expression only; the
/// parentheses let a negative value follow an operator.
QString Value_Text(double value)
{
    const QString number = Fixed_Text(value, VALUE_DECIMALS);

    return value < 0.0 ? QString("(%1)").arg(number) : number;
}

/// What a search finds in a text.
struct TMatch
{
    int start; ///< negative if it finds nothing
    int size;
};

/// Looks for the next match at or behind a position.
using TSearch = std::function<TMatch(int from)>;

/// `text` with the value in place of every match; nothing if that is longer than `limit`. QString::replace copies the
/// whole text anew for each two thousand matches and looks for the next word boundary in the copy; here the matches are
/// those of `text` as it came.
std::optional<QString> Replaced(const QString& text, const TSearch& search, double value, int limit)
{
    TMatch match = search(0);
    if (match.start < 0) {
        return text;
    }
    const QString value_text = Value_Text(value);
    QString result;
    int copied = 0;
    while (match.start >= 0) {
        result += text.midRef(copied, match.start - copied);
        result += value_text;
        if (result.size() > limit) {
            return std::nullopt;
        }
        copied = match.start + match.size;
        match = search(match.size > 0 ? copied : copied + 1);
    }
    return result += text.midRef(copied);
}

std::optional<QString> Replaced_Name(const QString& text, const QString& name, double value)
{
    const TNameSearch names(name);
    const auto search = [&](int from) { return TMatch{names.Index_In(text, from), name.size()}; };

    return Replaced(text, search, value, std::numeric_limits<int>::max());
}

/// Nothing if the text becomes too long: a pattern that matches next to nothing is met between the characters of every
/// value again, and with a few of these the text would outgrow the memory.
std::optional<QString> Replaced_Pattern(const QString& text, const QString& name, double value)
{
    if (Is_Excessive(name, text)) {
        return text;
    }
    const QRegExp pattern(QString("(\\b%1\\b)").arg(name));
    const auto search = [&](int from) {
        const int start = pattern.indexIn(text, from);
        return TMatch{start, pattern.matchedLength()};
    };
    return Replaced(text, search, value, std::max(LARGEST_GROWN_TEXT, text.size()));
}

std::optional<QString> Substituted(const QString& text, const TExpression::TVariable& variable)
{
    const QString name = variable.name.toUpper();

    return Is_Plain(name) ? Replaced_Name(text, name, variable.value) : Replaced_Pattern(text, name, variable.value);
}

} // namespace

std::optional<QString> Substituted_Patterns(const QString& text, const std::vector<TExpression::TVariable>& variables)
{
    std::optional<QString> substituted = text;

    for (const TExpression::TVariable& variable : variables) {
        substituted = Substituted(*substituted, variable);
        if (!substituted) {
            break;
        }
    }
    return substituted;
}
