#include "app/hostlink_win.h"

namespace qrl {

namespace {

class TWindowChannel final : public IHostChannel {
public:
    uint64_t Deliver(uint64_t window, uint32_t message, const THostLinkRecord& record) override {
        // The record stays on our stack until SendMessageW returns, which is all the host may rely on.
        const LRESULT result = SendMessageW(reinterpret_cast<HWND>(static_cast<uintptr_t>(window)),
                                            message, 0, reinterpret_cast<LPARAM>(&record));
        return static_cast<uint64_t>(result);
    }
};

}  // namespace

IHostChannel& WindowHostChannel() {
    static TWindowChannel channel;
    return channel;
}

}  // namespace qrl
