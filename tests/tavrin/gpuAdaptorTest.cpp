// The base of callers' adaptors, and the handle to one.
#include "transformFixtures.h"

#include <gtest/gtest.h>

#include <utility>

using namespace Tavrin;

namespace
{

TEST(GPUAdaptor, KeepsLanguageAndPipeline)
{
    IdleAdaptor const adaptor;
    EXPECT_EQ(adaptor.getLanguage(), GPUAdaptor::LANGUAGE_GLSL);
    EXPECT_EQ(adaptor.getPipeline(), GPUAdaptor::PIPELINE_DEFAULT);
}

TEST(GPUAdaptorPtr, IsEmptyByDefault)
{
    GPUAdaptorPtr handle;
    EXPECT_EQ(handle.get(), nullptr);
    EXPECT_EQ(handle.operator->(), nullptr);
    EXPECT_EQ(std::as_const(handle).get(), nullptr);
    EXPECT_EQ(std::as_const(handle).operator->(), nullptr);
}

TEST(GPUAdaptorPtr, CopiesShareTheAdaptorAndTheLastOneDeletesIt)
{
    bool deleted = false;
    auto* const adaptor = new IdleAdaptor(&deleted);
    GPUAdaptorPtr handle(adaptor);
    EXPECT_EQ(handle.get(), adaptor);
    EXPECT_EQ(handle.operator->(), adaptor);
    EXPECT_EQ(std::as_const(handle).get(), adaptor);
    EXPECT_EQ(std::as_const(handle).operator->(), adaptor);
    {
        GPUAdaptorPtr const copy(handle);
        GPUAdaptorPtr assigned;
        assigned = copy;
        handle = nullptr;
        EXPECT_EQ(assigned.get(), adaptor);
        EXPECT_FALSE(deleted);
    }
    EXPECT_TRUE(deleted);
}

TEST(GPUAdaptorPtr, TakesOwnershipOfAnAssignedAdaptor)
{
    bool firstDeleted = false;
    bool secondDeleted = false;
    {
        GPUAdaptorPtr handle(new IdleAdaptor(&firstDeleted));
        handle = new IdleAdaptor(&secondDeleted);
        EXPECT_TRUE(firstDeleted);
        EXPECT_FALSE(secondDeleted);
    }
    EXPECT_TRUE(secondDeleted);
}

} // namespace
