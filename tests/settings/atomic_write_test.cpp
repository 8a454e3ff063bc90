// A process killed in the middle of a write leaves the old file or the new
// one, never a damaged one.
#include <gtest/gtest.h>

#ifndef _WIN32
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <thread>

#include "settings/IniStore.h"
#include "support/TempDir.h"

using namespace tav;

TEST(AtomicWrite, KillDuringWritesNeverLeavesADamagedFile) {
    tavtest::TempDir dir;
    std::string file = (dir / "state.ini").string();
    {
        ProfileService service;
        IniStore ini(service);
        ini.put("S", "Value", std::string(30000, 'A'), file);
        ini.put("S", "Other", "kept", file);
    }
    for (int round = 0; round < 12; ++round) {
        pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            ProfileService service;
            IniStore ini(service);
            for (int i = 0;; ++i) ini.put("S", "Value", std::string(30000 + i % 7, i % 2 ? 'B' : 'A'), file);
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(3 + round * 4));
        kill(child, SIGKILL);
        int status = 0;
        waitpid(child, &status, 0);

        ProfileService service;
        IniStore ini(service);
        ini.missingMode = ini.missingDefault = kMissingNotFound;
        std::string v = ini.get("S", "Value", file);
        ASSERT_GE(v.size(), 30000u) << "round " << round;
        EXPECT_TRUE(v.find_first_not_of(v[0]) == std::string::npos) << "round " << round;
        EXPECT_EQ(ini.get("S", "Other", file), "kept");
    }
    // What the killed writers left behind goes at the next start.
    ProfileService::removeStaleTemporaries(dir.str());
    for (const auto& item : std::filesystem::directory_iterator(dir.path()))
        EXPECT_EQ(item.path().filename().string(), "state.ini");
}
#endif
