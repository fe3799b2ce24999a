#include "Vl/Common/Log/DebugHooks.h"

#include <gmock/gmock.h>

#include <memory>

#include "Tests/Support/PrivateWorld.h"
#include "Tests/Support/SyslogReceiver.h"

namespace {

using testing::IsEmpty;

TEST(DebugHooksTest, AnAllocationIsGivenBackAsItIs) {
    int memory = 0;
    EXPECT_EQ(&memory, Valen::Log::debug_alloc(&memory, sizeof memory, "here"));
    EXPECT_EQ(nullptr, Valen::Log::debug_alloc(nullptr, 0, nullptr));
}

TEST(DebugHooksTest, AReleaseReleasesNothing) {
    const auto memory = std::make_unique<int>(7);
    Valen::Log::debug_free(memory.get(), sizeof(int));
    Valen::Log::debug_free(memory.get(), sizeof(int), "here");
    EXPECT_EQ(7, *memory);
}

TEST(DebugHooksTest, NothingIsWrittenAnywhere) {
    const support::PrivateWorld world;
    support::SyslogReceiver syslog;
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    Valen::Log::DbgConsole(61, "%s %d", "text", 1);
    Valen::Log::debug_dump_assertion("assert", "a == b", "function", "File.cpp", 12);
    Valen::Log::BacktraceToDbgConsole();
    Valen::Log::VerifyReleaseBuild();
    Valen::Log::LoadFilter();
    EXPECT_EQ("", testing::internal::GetCapturedStdout());
    EXPECT_EQ("", testing::internal::GetCapturedStderr());
    EXPECT_THAT(syslog.texts(), IsEmpty());
}

}  // namespace
