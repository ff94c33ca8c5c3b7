#pragma once

#include <QDomImplementation>

/// Sets Qt's process-wide policy for data that XML cannot carry, and puts the former one back at the end of its life.
class TXmlPolicy
{
public:
    explicit TXmlPolicy(QDomImplementation::InvalidDataPolicy policy)
        : d_former(QDomImplementation::invalidDataPolicy())
    {
        QDomImplementation::setInvalidDataPolicy(policy);
    }
    ~TXmlPolicy() { QDomImplementation::setInvalidDataPolicy(d_former); }

    Q_DISABLE_COPY(TXmlPolicy)

private:
    QDomImplementation::InvalidDataPolicy d_former;
};
