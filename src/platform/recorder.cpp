#include "platform/recorder.h"

namespace platform {
namespace {

Recorder*& installed() {
    static Recorder* recorder = nullptr;
    return recorder;
}

} // namespace

Recorder* activeRecorder() {
    return installed();
}

void installRecorder(Recorder* recorder) {
    installed() = recorder;
}

} // namespace platform
