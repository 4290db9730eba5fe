#include "recording/textfile.h"

#include "recording/errors.h"

#include <cerrno>
#include <fcntl.h>
#include <memory>
#include <new>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <zstd.h>

namespace recording {

namespace {

constexpr int kCompressionLevel = 6;

class Descriptor {
public:
    explicit Descriptor(int fd)
        : m_fd(fd)
    {}
    ~Descriptor()
    {
        if (m_fd >= 0)
            ::close(m_fd);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int get() const { return m_fd; }
    bool isOpen() const { return m_fd >= 0; }

    // The system may report only here that it could not keep what was written.
    bool close() { return ::close(std::exchange(m_fd, -1)) == 0; }

private:
    int m_fd;
};

std::size_t sizeOf(const Descriptor& in, const std::filesystem::path& file)
{
    struct stat status = {};
    if (::fstat(in.get(), &status) != 0)
        throw ReadError({file}, systemReason(errno));
    return S_ISREG(status.st_mode) ? static_cast<std::size_t>(status.st_size) : 0;
}

// Decompresses into `out` until the frame ends; returns how many bytes of `packed` it took.
std::size_t unpackFrame(const std::string& packed, std::string& out, const std::filesystem::path& file)
{
    const std::unique_ptr<ZSTD_DCtx, decltype(&ZSTD_freeDCtx)> context(ZSTD_createDCtx(), &ZSTD_freeDCtx);
    if (!context)
        throw std::bad_alloc();

    constexpr std::size_t kGuess = 6; // days compress to about a sixth
    ZSTD_inBuffer in{packed.data(), packed.size(), 0};
    std::size_t used = 0;
    out.resize(packed.size() * kGuess + ZSTD_DStreamOutSize());
    while (true) {
        if (used == out.size())
            out.resize(out.size() * 2);
        ZSTD_outBuffer piece{out.data(), out.size(), used};
        const std::size_t before = in.pos;
        const std::size_t result = ZSTD_decompressStream(context.get(), &piece, &in);
        if (ZSTD_isError(result))
            throw ReadError({file}, std::string("the compressed data is corrupt: ") + ZSTD_getErrorName(result));
        const bool moved = piece.pos != used || in.pos != before;
        used = piece.pos;
        if (result == 0)
            break;
        if (!moved && used < out.size())
            throw ReadError({file}, "the compressed data is cut: the file ends in the middle of it");
    }
    out.resize(used);
    return in.pos;
}

} // namespace

std::string readFile(const std::filesystem::path& file)
{
    Descriptor in(::open(file.c_str(), O_RDONLY | O_CLOEXEC));
    if (!in.isOpen())
        throw ReadError({file}, systemReason(errno));

    constexpr std::size_t kRoom = 65536;
    std::string bytes;
    std::size_t used = 0;
    bytes.resize(sizeOf(in, file) + 1); // room for one more byte shows the end without another resize
    while (true) {
        if (used == bytes.size())
            bytes.resize(bytes.size() + kRoom);
        const ssize_t got = ::read(in.get(), bytes.data() + used, bytes.size() - used);
        if (got < 0 && errno != EINTR)
            throw ReadError({file}, systemReason(errno));
        if (got == 0)
            break;
        if (got > 0)
            used += static_cast<std::size_t>(got);
    }
    bytes.resize(used);
    if (bytes.empty())
        throw ReadError({file}, "the file is empty, it has not even a header");
    return bytes;
}

std::string readCompressedFile(const std::filesystem::path& file)
{
    const std::string packed = readFile(file);
    std::string text;
    const std::size_t taken = unpackFrame(packed, text, file);
    if (taken != packed.size())
        throw ReadError({file}, std::to_string(packed.size() - taken) + " bytes stand after the compressed data");
    if (text.empty())
        throw ReadError({file}, "the file is empty, it has not even a header");
    return text;
}

void writeFile(const std::filesystem::path& file, std::string_view bytes, const std::filesystem::path& named)
{
    constexpr mode_t kReadWrite = 0666;
    Descriptor out(::open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, kReadWrite));
    if (!out.isOpen())
        throw WriteError(named, systemReason(errno));
    while (!bytes.empty()) {
        const ssize_t put = ::write(out.get(), bytes.data(), bytes.size());
        if (put < 0 && errno != EINTR)
            throw WriteError(named, systemReason(errno));
        if (put > 0)
            bytes.remove_prefix(static_cast<std::size_t>(put));
    }
    if (::fsync(out.get()) != 0 && errno != EINVAL) // what is no file on a disk cannot be synced
        throw WriteError(named, systemReason(errno));
    if (!out.close())
        throw WriteError(named, systemReason(errno));
}

std::string compressed(std::string_view text)
{
    const std::unique_ptr<ZSTD_CCtx, decltype(&ZSTD_freeCCtx)> context(ZSTD_createCCtx(), &ZSTD_freeCCtx);
    if (!context)
        throw std::bad_alloc();
    ZSTD_CCtx_setParameter(context.get(), ZSTD_c_compressionLevel, kCompressionLevel);
    ZSTD_CCtx_setParameter(context.get(), ZSTD_c_checksumFlag, 1);
    std::string packed(ZSTD_compressBound(text.size()), '\0');
    const std::size_t size = ZSTD_compress2(context.get(), packed.data(), packed.size(), text.data(), text.size());
    if (ZSTD_isError(size))
        throw std::runtime_error(std::string("zstd: ") + ZSTD_getErrorName(size));
    packed.resize(size);
    return packed;
}

} // namespace recording
