#pragma once

#include "store/artifact_store.h"
#include "test_support.h"

#include <deque>
#include <gtest/gtest.h>
#include <memory>

namespace kelmo::testing {

// An open panel whose answers the test gives: each run() is queued with its request.
class ScriptedOpenPanel : public OpenPanel {
public:
    struct Pending {
        OpenPanelRequest request;
        Completion completion;
    };

    void run(const OpenPanelRequest& request, Completion completion) override {
        pending.push_back({request, std::move(completion)});
    }

    // Answers the oldest open panel.
    void answer(std::optional<std::filesystem::path> chosen) {
        ASSERT_FALSE(pending.empty()) << "no panel is open";
        Pending next = std::move(pending.front());
        pending.pop_front();
        next.completion(std::move(chosen));
    }

    std::deque<Pending> pending;
};

// A store whose settings, Downloads folder and notifications all live in a
// temporary folder of the test's own.
class StoreTest : public ::testing::Test {
protected:
    std::filesystem::path settingsFile() const { return root / "config" / "settings"; }
    std::filesystem::path downloads() const { return root / "Downloads"; }

    ArtifactStore::Environment environment() {
        ArtifactStore::Environment env;
        env.settingsFile = settingsFile();
        env.notifications = &notifications;
        env.downloadsDirectory = [this]() -> std::optional<std::filesystem::path> {
            if (!offerDownloads)
                return std::nullopt;
            return downloads();
        };
        env.openPanel = panel;
        return env;
    }

    ArtifactStore& makeStore() {
        store.reset();
        store = std::make_unique<ArtifactStore>(environment());
        return *store;
    }

    // The settings as another process would read them from disk.
    SettingsStore savedSettings() const { return SettingsStore{settingsFile()}; }

    static std::vector<std::string> names(const std::vector<Artifact>& artifacts) {
        std::vector<std::string> result;
        for (const auto& artifact : artifacts)
            result.push_back(artifact.name);
        return result;
    }

    TemporaryDirectory root;
    NotificationCenter notifications;
    std::shared_ptr<ScriptedOpenPanel> panel = std::make_shared<ScriptedOpenPanel>();
    bool offerDownloads = false;
    std::unique_ptr<ArtifactStore> store;
};

} // namespace kelmo::testing
