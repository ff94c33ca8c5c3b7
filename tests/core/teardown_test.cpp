#include "core/teardown.h"

#include <gtest/gtest.h>

namespace {

TEST(Disconnect_Children, Cuts_what_comes_from_children_and_grandchildren_and_nothing_else)
{
    QObject receiver;
    auto* child = new QObject(&receiver);
    auto* grandchild = new QObject(child);
    QObject stranger;
    QObject witness;
    int receptions = 0;
    int sightings = 0;
    for (QObject* sender : {child, grandchild, &stranger}) {
        QObject::connect(sender, &QObject::objectNameChanged, &receiver, [&]() { ++receptions; });
        QObject::connect(sender, &QObject::objectNameChanged, &witness, [&]() { ++sightings; });
    }

    Disconnect_Children(&receiver);
    child->setObjectName("child");
    grandchild->setObjectName("grandchild");
    EXPECT_EQ(receptions, 0);

    stranger.setObjectName("stranger");
    EXPECT_EQ(receptions, 1);
    EXPECT_EQ(sightings, 3);
}

} // namespace
