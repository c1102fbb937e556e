#pragma once

#include "platform/MediaAsset.h"

#include <chrono>
#include <memory>

namespace orvalen {

/// Reads the tags of the expected files on up to 16 threads and discards them. The system then has these
/// parts of the files in its cache when the reader needs them. Reads at most 128 kB per file, 32 MB in total
/// ahead of the reader. Pauses if the system has cached the files already, and resumes when the reader has to
/// wait. One thread tries two files first. If the system does not cache them, reading ahead stops for good.
class ReadAhead : public MediaReadAhead {
public:
    ReadAhead();
    /// Never waits for a drive. A thread that is still reading ends by itself.
    ~ReadAhead() override;
    ReadAhead(const ReadAhead&) = delete;
    ReadAhead& operator=(const ReadAhead&) = delete;

    void expect(const std::string& path) override;
    void passOne() override;

    /// State shared with the threads, which keep it alive.
    struct Shared;

private:
    bool hasReaderWaited();

    std::shared_ptr<Shared> shared_;
    std::chrono::steady_clock::time_point lastPass_ = std::chrono::steady_clock::now();
    long waits_ = 0; ///< number of waits of the reader's thread at the last passOne()
};

} // namespace orvalen
