#include "tests/tessimodel/frame/elementlist.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <set>

namespace {

using namespace tests;

TEST(ElementPool, shouldGiveEachElementAPlaceOfItsOwnWhenManyAreAskedFor)
{
    const QList<PooledElement> list = listOf(kMany);
    std::set<const PooledElement*> places;
    for (const PooledElement& element : list) {
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(&element) % alignof(PooledElement), 0U);
        places.insert(&element);
    }
    EXPECT_EQ(places.size(), static_cast<std::size_t>(kMany));
    expectNumbers(list);
}

TEST(ElementPool, shouldKeepWhatIsLeftWhenOthersOfItsBlockAreGivenBack)
{
    QList<PooledElement> list = listOf(kMany);
    QList<PooledElement> kept;
    kept.append(list.at(0));
    kept.append(list.at(1));
    list.clear();
    const QList<PooledElement> other = listOf(kMany);
    expectNumbers(kept);
    expectNumbers(other);
}

} // namespace
