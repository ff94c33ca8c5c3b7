#include "core/namesearch.h"

#include "core/assertion.h"
#include "core/expressionwords.h"

namespace {

bool Is_In_Word(const QString& text, int index)
{
    return index >= 0 && index < text.size() && Is_Word_Character(text.at(index));
}

bool Is_Word_Boundary(const QString& text, int index)
{
    return Is_In_Word(text, index - 1) != Is_In_Word(text, index);
}

} // namespace

TNameSearch::TNameSearch(const QString& name) : d_name(name), d_borders{0, 0}
{
    NORVEXA_ASSERT(!name.isEmpty());

    for (int index = 1; index < name.size(); ++index) {
        d_borders.push_back(Kept(d_borders.back(), name.at(index)));
    }
}

int TNameSearch::Index_In(const QString& text, int from) const
{
    int matched = 0;

    for (int index = from; index < text.size(); ++index) {
        matched = Kept(matched, text.at(index));
        if (matched < d_name.size()) {
            continue;
        }
        const int start = index + 1 - matched;
        if (Is_Word_Boundary(text, start) && Is_Word_Boundary(text, index + 1)) {
            return start;
        }
        matched = d_borders.back();
    }
    return -1;
}

/// How many characters of the name match up to `next`, if `matched` of them do in front of it.
int TNameSearch::Kept(int matched, QChar next) const
{
    while (matched > 0 && d_name.at(matched) != next) {
        matched = d_borders[static_cast<std::size_t>(matched)];
    }
    return d_name.at(matched) == next ? matched + 1 : 0;
}
