#include "core/xmlchildren.h"

TXmlChildren::TXmlChildren(const QDomElement& parent) : d_next(parent.firstChildElement()) {}

QDomElement TXmlChildren::Find(const QString& name)
{
    const auto found = d_passed.constFind(name);
    if (found != d_passed.constEnd()) {
        return *found;
    }
    for (; !d_next.isNull(); d_next = d_next.nextSiblingElement()) {
        const QString next_name = d_next.tagName();

        if (!d_passed.contains(next_name)) {
            d_passed.insert(next_name, d_next);
        }
        if (next_name == name) {
            return d_next;
        }
    }
    return {};
}
