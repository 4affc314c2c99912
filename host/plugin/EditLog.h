// Collects the edits that a plug-in reports to its host, for the thread that shows it.
#pragma once

#include "host/plugin/EditListener.h"
#include "host/plugin/HostedPlugin.h"
#include "host/window/EditorWindow.h"

#include <mutex>
#include <optional>
#include <vector>

namespace zelvatone {

struct EditNotice {
    enum class Kind { kBegin, kChange, kEnd };

    Kind kind;
    int parameter;
    float value; // normalised; of changes only
};

// Listens as long as it lives; the plug-in must outlive it. Any thread may tell and take.
class EditLog final : public EditListener {
public:
    explicit EditLog(HostedPlugin& plugin);
    ~EditLog() override;
    EditLog(const EditLog&) = delete;
    EditLog& operator=(const EditLog&) = delete;

    void onBeginEdit(int parameter) noexcept override;
    void onAutomate(int parameter, float value) noexcept override;
    void onEndEdit(int parameter) noexcept override;
    void onSizeWindow(int width, int height) noexcept override;

    // What has come since it was asked last, in order.
    std::vector<EditNotice> takeNotices();
    // The size that was asked for last, if any was since this was asked.
    std::optional<WindowSize> takeSize();

private:
    void add(const EditNotice& notice) noexcept;

    HostedPlugin& plugin_;
    std::mutex mutex_; // guards what follows
    std::vector<EditNotice> notices_;
    std::optional<WindowSize> size_;
};

} // namespace zelvatone
