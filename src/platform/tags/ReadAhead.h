#pragma once

#include "platform/MediaAsset.h"

#include <chrono>
#include <memory>

namespace orvalen {

/// Reads the tags of the expected files once, on a few threads, and throws them away: the same places of the
/// files are then in the system's page cache when the one reader asks for them. Reads at most 128 kB of a
/// file, which is 32 MB ahead. Rests while the files are in the cache anyway, goes on when the reader has to
/// wait, and ends when the reader waits for files that have been read ahead.
class ReadAhead : public MediaReadAhead {
public:
    ReadAhead();
    /// Never waits for a drive: a thread that is still reading ends by itself.
    ~ReadAhead() override;
    ReadAhead(const ReadAhead&) = delete;
    ReadAhead& operator=(const ReadAhead&) = delete;

    void expect(const std::string& path) override;
    void passOne() override;

    /// The state that the threads share with this object, and keep as long as they run.
    struct Shared;

private:
    bool hasReaderWaited();
    void end();

    std::shared_ptr<Shared> shared_;
    std::size_t threads_ = 0;
    std::chrono::steady_clock::time_point lastPass_ = std::chrono::steady_clock::now();
    long waits_ = 0;      ///< of the reader's thread, when last asked
    int waitsInVain_ = 0; ///< in a row, for files that have been read ahead
};

} // namespace orvalen
