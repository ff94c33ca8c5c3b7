#include "core/xmlchildren.h"

TXmlChildren::TXmlChildren(const QDomElement& parent) : d_next(parent.firstChildElement()) {}

QDomElement TXmlChildren::Find(const QString& name)
{
    const auto found = d_passed.constFind(name);
    if (found != d_passed.constEnd()) {
        return *found;
    }
    while (!d_next.isNull()) {
        const QDomElement child = d_next;
        const QString child_name = child.tagName();

        d_next = child.nextSiblingElement();
        if (!d_passed.contains(child_name)) {
            d_passed.insert(child_name, child);
        }
        if (child_name == name) {
            return child;
        }
    }
    return {};
}
