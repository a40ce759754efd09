// Reads files that are being decoded.
#include "src/platform/image/base/input_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <new>

#include "src/platform/image/base/limits.h"
#include "src/platform/image/base/picture_memory.h"

static constexpr std::uint64_t kHeadSize = 4096;

static FileIdentity IdentityFromStat(const struct stat& objStat)
{
    const auto nNanoseconds = [](const timespec& objTime) {
        return static_cast<std::int64_t>(objTime.tv_sec) * 1'000'000'000 + objTime.tv_nsec;
    };
    return {objStat.st_dev, objStat.st_ino, static_cast<std::uint64_t>(objStat.st_size),
            nNanoseconds(objStat.st_mtim), nNanoseconds(objStat.st_ctim)};
}

std::unique_ptr<InputFile> InputFile::Open(const std::string& sHostPath)
{
    // O_NONBLOCK: opening a pipe must not wait for its writer; it is refused below.
    const int nDescriptor = open(sHostPath.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (nDescriptor < 0)
        return nullptr;
    std::unique_ptr<InputFile> pFile(new InputFile);
    pFile->m_nDescriptor = nDescriptor;
    struct stat objStat {
    };
    if (fstat(nDescriptor, &objStat) != 0 || !S_ISREG(objStat.st_mode))
        return nullptr;
    pFile->m_objIdentity = IdentityFromStat(objStat);
    return pFile;
}

InputFile::InputFile(Bytes aMemory) : m_aMemory(aMemory)
{
    m_objIdentity.nSize = aMemory.size();
}

InputFile::~InputFile()
{
    if (m_nDescriptor >= 0)
        close(m_nDescriptor);
}

std::optional<FileIdentity> InputFile::IdentityOf(const std::string& sHostPath)
{
    struct stat objStat {
    };
    if (stat(sHostPath.c_str(), &objStat) != 0)
        return std::nullopt;
    return IdentityFromStat(objStat);
}

Bytes InputFile::Head()
{
    if (m_aMemory.data())
        return m_aMemory.first(std::min<std::size_t>(m_aMemory.size(), kHeadSize));
    if (m_aHead.empty()) {
        m_aHead.resize(std::min(Size(), kHeadSize));
        m_aHead.resize(ReadAt(0, m_aHead));
    }
    return m_aHead;
}

Bytes InputFile::All()
{
    if (!m_aMemory.data() && m_nDescriptor >= 0) {
        if (Size() > nLargestFile())
            return {};
        try {
            ResizeFresh(m_aRead, Size());
        } catch (const std::bad_alloc&) {
            return {};
        }
        m_aRead.resize(ReadAt(0, m_aRead));
        m_aMemory = m_aRead;
    }
    return m_aMemory;
}

std::size_t InputFile::ReadAt(std::uint64_t nOffset, std::span<std::uint8_t> aOut)
{
    if (m_aMemory.data()) {
        if (nOffset >= m_aMemory.size())
            return 0;
        const Bytes aFound = m_aMemory.subspan(nOffset, std::min(aOut.size(), m_aMemory.size() - nOffset));
        std::copy(aFound.begin(), aFound.end(), aOut.begin());
        return aFound.size();
    }
    std::size_t nDone = 0;
    while (nDone < aOut.size()) {
        const ssize_t nRead = pread(m_nDescriptor, aOut.data() + nDone, aOut.size() - nDone,
                                    static_cast<off_t>(nOffset + nDone));
        if (nRead < 0 && errno == EINTR)
            continue;
        if (nRead <= 0)
            break;
        nDone += static_cast<std::size_t>(nRead);
    }
    return nDone;
}
