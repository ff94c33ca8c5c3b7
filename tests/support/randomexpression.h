#pragma once

#include "core/expression.h"

#include <QString>
#include <QStringList>

#include <random>
#include <vector>

/// Makes texts and variables at random, the same ones for the same seed.
class TRandomExpression
{
public:
    explicit TRandomExpression(unsigned int seed);

    /// The names that the texts use.
    void Set_Names(const QStringList& names) { d_names = names; }

    /// An expression by its grammar; half of them have some tokens lost, doubled or swapped for others.
    QString Text();

    /// Tokens in any order.
    QString Jumble();

    /// `text` with some of its characters lost, doubled, moved or swapped for others.
    QString Mutated(QString text);

    /// Up to five variables. Their names overlap, differ in their case only, begin with digits or hold the signs of
    /// regular expressions; their values are of any kind.
    std::vector<TExpression::TVariable> Variables();

    int Below(int limit) { return static_cast<int>(d_random() % static_cast<unsigned int>(limit)); }

private:
    void Append_Expression(QStringList* tokens, int depth);
    void Append_Operand(QStringList* tokens, int depth);
    void Append_Group(QStringList* tokens, int kind, int depth);
    void Spoil(QStringList* tokens);
    QString Any_Of(const QStringList& tokens) { return tokens.at(Below(tokens.size())); }
    QString Any_Token();
    QString Any_Name();
    double Any_Value();

    std::mt19937 d_random;
    QStringList d_names;
};
