#pragma once

#include <QDomElement>
#include <QHash>
#include <QString>

/// The child elements of an element by their names. However often it is asked, it passes each of them once: a file may
/// hold a million elements that nobody knows among those that are looked for.
class TXmlChildren
{
public:
    explicit TXmlChildren(const QDomElement& parent);

    /// The first child element of this name; null if there is none.
    QDomElement Find(const QString& name);

private:
    QDomElement d_next;                   ///< the first that may not have been passed
    QHash<QString, QDomElement> d_passed; ///< of each name the first
};
