// Loads and saves the schedule. The times include opening and closing the file.
#include "scheduler/model/schedulefile.h"

#include "benches/benches.h"
#include "benches/comparison.h"
#include "benches/entries.h"
#include "lib/base/files.h"
#include "scheduler/model/schedulecodec.h"

#include <windows.h>

#include <array>
#include <cstdio>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

namespace bench {
namespace {

constexpr std::array<std::size_t, 3> counts = {1000, 100000, 1000000};

/// The strings of a record, and its fixed-size fields as raw bytes.
struct PlainRecord {
    std::string path;
    std::string lastResult;
    std::array<std::byte, 35> beforeDialup;
    std::string dialupEntry;
    std::array<std::byte, 35> afterDialup;
};

class PlainCopier {
public:
    explicit PlainCopier(const std::byte* source) : source_(source) {}

    void copy(void* target, std::size_t size) {
        std::memcpy(target, source_, size);
        source_ += size;
    }
    void copy(std::string& text) {
        std::uint32_t length = 0;
        copy(&length, sizeof(length));
        text.assign(reinterpret_cast<const char*>(source_), length);
        source_ += length;
    }

private:
    const std::byte* source_;
};

std::vector<PlainRecord> copyPlainly() {
    base::MappedFile file;
    file.open(scheduler::schedulePath());
    PlainCopier copier(file.bytes().data());
    std::array<std::uint32_t, 2> head{};
    copier.copy(head.data(), sizeof(head));
    std::vector<PlainRecord> records(head[1]);
    for (PlainRecord& record : records) {
        copier.copy(record.path);
        copier.copy(record.lastResult);
        copier.copy(record.beforeDialup.data(), record.beforeDialup.size());
        copier.copy(record.dialupEntry);
        copier.copy(record.afterDialup.data(), record.afterDialup.size());
    }
    return records;
}

class IgnoredFailures : public scheduler::ScheduleFileListener {
    void onLoadFailed(const std::string&) override {}
    void onSaveFailed(const std::string&, const std::string&) override {}
};

void writeOnce(const std::string& path, const std::vector<std::byte>& bytes) {
    std::FILE* const file = std::fopen(path.c_str(), "wb");
    std::fwrite(bytes.data(), 1, bytes.size(), file);
    std::fclose(file);
}

} // namespace

void benchLoading() {
    for (const std::size_t count : counts) {
        {
            scheduler::ScheduleList list;
            list.assign(manyEntries(count));
            saveForBench(list);
        }
        // Freeing the loaded entries is not measured.
        const auto subject = [] {
            scheduler::ScheduleList list;
            return secondsOf([&] { scheduler::loadSchedule(list, scheduler::scheduleMagic); });
        };
        const auto limit = [] {
            std::vector<PlainRecord> records;
            return secondsOf([&] { records = copyPlainly(); });
        };
        compare({"load the schedule", count, "entries", "copying the mapped records", 1.5}, subject, limit);
    }
}

void benchSaving() {
    for (const std::size_t count : counts) {
        scheduler::ScheduleList list;
        list.assign(manyEntries(count));
        saveForBench(list);
        std::vector<std::byte> bytes;
        {
            base::MappedFile file;
            file.open(scheduler::schedulePath());
            bytes.assign(file.bytes().begin(), file.bytes().end());
        }
        const std::string other = base::windowsDirectory() + "bench.dat";
        const auto subject = [&] { return secondsOf([&] { keep(scheduler::saveSchedule(list)); }); };
        const auto limit = [&] { return secondsOf([&] { writeOnce(other, bytes); }); };
        compare({"save the schedule", count, "entries", "one fwrite of its bytes", 1.5}, subject, limit);

        IgnoredFailures failures;
        scheduler::ScheduleFile file(failures);
        file.save(list); // from now on, each save first copies the old file
        const std::string copy = base::windowsDirectory() + "copy.dat";
        const auto saving = [&] { return secondsOf([&] { file.save(list); }); };
        const auto writingAndCopying = [&] {
            return secondsOf([&] {
                CopyFileA(other.c_str(), copy.c_str(), FALSE);
                writeOnce(other, bytes);
            });
        };
        compare({"copy the old file and save the schedule", count, "entries", "CopyFile and one fwrite", 1.5},
                saving, writingAndCopying);
        std::remove(other.c_str());
        std::remove(copy.c_str());
    }
}

} // namespace bench
