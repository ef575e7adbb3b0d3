#include "base/jobs/Patience.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>

namespace daylark {
namespace {

TEST(PatienceTest, AShareThatDoesNotAnswerIsWaitedForOnceAndOthersAreAsked) {
    struct Share {
        std::atomic<int> asked = 0;
        std::atomic<bool> isBack = false;
    };
    const auto share = std::make_shared<Share>();
    const std::function<int()> gone = [share] {
        ++share->asked;
        share->isBack.wait(false);
        return 1;
    };
    PatientQuestions questions;
    EXPECT_EQ(questions.ask<int>(QStringLiteral("/mnt/gone/a.mov"), gone), std::nullopt);
    EXPECT_EQ(questions.ask<int>(QStringLiteral("/mnt/gone/day/b.mov"), gone), std::nullopt);
    EXPECT_EQ(share->asked, 1);
    EXPECT_EQ(questions.ask<int>(QStringLiteral("/mnt/here/a.mov"), [] { return 7; }), 7);
    // Who loses interest has not found out that it is gone.
    PatientQuestions cancelled;
    const CancelFlag stop(true);
    EXPECT_EQ(cancelled.ask<int>(QStringLiteral("/mnt/gone/a.mov"), gone, &stop), std::nullopt);
    share->isBack = true;
    share->isBack.notify_all();
    EXPECT_EQ(cancelled.ask<int>(QStringLiteral("/mnt/gone/a.mov"), gone), 1);
}

} // namespace
} // namespace daylark
