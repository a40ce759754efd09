// Observed values.
#include "src/controls/observed.h"

#include <gtest/gtest.h>

namespace
{

struct CountingObserver : ValueObserver {
    void ValueChanged() override { ++changes; }
    int changes = 0;
};

}  // namespace

TEST(Observed, IsReadAndAssignedLikeAPlainValue)
{
    Observed<bool> flag(false);
    EXPECT_FALSE(flag);

    flag = true;

    EXPECT_TRUE(flag);
}

TEST(Observed, NotifiesOfEachAssignmentOfAnotherValue)
{
    Observed<int> count(1);
    CountingObserver observer;
    const Observation watch(count, observer);

    count = 1;
    EXPECT_EQ(observer.changes, 0);

    count = 2;
    count = 3;
    EXPECT_EQ(observer.changes, 2);
}

TEST(Observed, ShowsObserversTheNewValue)
{
    struct Reader : ValueObserver {
        explicit Reader(Observed<int>& read) : value(read), watch(read, *this) {}
        void ValueChanged() override { seen = value; }
        Observed<int>& value;
        int seen = 0;
        Observation watch;
    };
    Observed<int> count(1);
    const Reader reader(count);

    count = 7;

    EXPECT_EQ(reader.seen, 7);
}

TEST(Observed, EndsTheWatchWithTheObservation)
{
    Observed<int> count(1);
    CountingObserver observer;
    {
        const Observation watch(count, observer);
    }

    count = 2;

    EXPECT_EQ(observer.changes, 0);
}
