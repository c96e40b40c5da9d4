#pragma once

#include "tests/stores/StoreFolder.h"

#include <gmock/gmock.h>

/// A settings file with one setting in it, to be made unusable.
class UnusableFile : public AnyFolder {
protected:
    UnusableFile() { other().set("callby", "e"); }

    [[nodiscard]] auto saysOnceWhatToDo() const {
        return testing::ElementsAre(
            testing::AllOf(testing::HasSubstr(path.string()), testing::HasSubstr("Make the file")));
    }
    /// Memory does what the file does not, and that is reported once.
    void expectToGoOnInMemory(SettingsStore& store) {
        store.WriteSetting("Options", "callby", "fn");
        EXPECT_EQ(option(store, "callby"), "fn");
        store.WriteSetting("Options", "timestamp", "True");
        EXPECT_EQ(option(store, "callby"), "fn");
        EXPECT_EQ(option(store, "timestamp"), "True");
        EXPECT_THAT(reported, saysOnceWhatToDo());
    }
};
