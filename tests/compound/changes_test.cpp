// Random changes: after each one the file is sound and holds what the model holds.
#include <gmock/gmock.h>

#include "churn.h"
#include "memory_device.h"

namespace {

using namespace compound;
using namespace compound_test;

class Changes : public testing::TestWithParam<int> {};

TEST_P(Changes, LeaveTheFileSoundAfterEachStep) {
    for (unsigned seed = 1; seed <= 8; ++seed) {
        const auto disk = std::make_shared<Disk>();
        const Options options{.version = GetParam()};
        auto file = *File::create(deviceOf(disk), options);
        Churn churn(seed, seed % 2 == 0 ? 9000 : 60000);
        for (int step = 0; step < 400; ++step) {
            churn.step(*file);
            const auto [fault, contents] = check(disk->bytes, After::call);
            ASSERT_EQ(fault, "") << "seed " << seed << " step " << step;
            ASSERT_TRUE(contents == churn.model) << "seed " << seed << " step " << step;
            if (step % 50 != 49) continue;
            ASSERT_TRUE(contentsOf(*file) == churn.model);
            ASSERT_EQ(file->close(), Error::none);
            ASSERT_EQ(check(disk->bytes, After::call).fault, "") << "closed in step " << step;
            auto opened = File::open(deviceOf(disk), options);
            ASSERT_TRUE(opened) << int(opened.error());
            file = std::move(*opened);
            ASSERT_TRUE(contentsOf(*file) == churn.model);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Versions, Changes, testing::Values(3, 4));

}  // namespace
