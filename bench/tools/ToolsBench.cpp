// The compare and the extraction over generated files, side by side with
// diff and strings on the same files, in the same run. The engines read
// through the C runtime's streams as the tools do; their output goes to a
// memory sink, which is what the log window takes (its own cost under wine
// is another benchmark's).
//
// Usage: tools_bench [directory]   (default: the current one); bench/tools/run.sh
// builds it without sanitizers and runs it.
#include "search/Pattern.h"
#include "tools/CompareEngine.h"
#include "tools/ExtractScan.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>

namespace
{

double Seconds(const std::chrono::steady_clock::time_point& start)
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double TimeCommand(const std::string& command)
{
    const auto start = std::chrono::steady_clock::now();
    if (system(command.c_str()) == -1)
        perror(command.c_str());
    return Seconds(start);
}

class StreamInput : public CompareInput, public ExtractInput
{
  public:
    explicit StreamInput(const std::string& path) : m_file(fopen(path.c_str(), "rb")) {}
    ~StreamInput() override { fclose(m_file); }
    bool ReadPiece(char* buffer, int size) override
    {
        return fgets(buffer, size, m_file) != nullptr;
    }
    int Read(char* buffer, int size) override
    {
        return static_cast<int>(fread(buffer, 1, static_cast<size_t>(size), m_file));
    }

  private:
    FILE* m_file;
};

class CountingSink : public CompareOutput
{
  public:
    bool Poll() override { return true; }
    void Write(const std::string& line) override { bytes += line.size(); }
    size_t bytes = 0;
};

class ExtractSink : public ExtractOutput
{
  public:
    void Poll() override {}
    void Write(const std::string& line) override { bytes += line.size(); }
    size_t bytes = 0;
};

void WriteFile(const std::string& path, const std::string& text)
{
    FILE* file = fopen(path.c_str(), "wb");
    fwrite(text.data(), 1, text.size(), file);
    fclose(file);
}

// 100,000 C-like lines, and a copy with about 1 % of them changed, 1 %
// inserted and 1 % deleted.
void MakeCompareFiles(const std::string& a, const std::string& b)
{
    std::mt19937 random(7);
    std::string first, second;
    for (int i = 0; i < 100000; ++i) {
        const std::string line = "    count_" + std::to_string(random() % 5000) + " = value(" +
                                 std::to_string(i) + ");\n";
        first += line;
        const unsigned roll = random() % 100;
        if (roll == 0)
            continue;
        if (roll == 1)
            second += "    changed(" + std::to_string(i) + ");\n";
        else
            second += line;
        if (roll == 2)
            second += "    inserted(" + std::to_string(i) + ");\n";
    }
    WriteFile(a, first);
    WriteFile(b, second);
}

void MakeBinary(const std::string& path, size_t megabytes)
{
    std::mt19937 random(11);
    std::string bytes(megabytes << 20, '\0');
    for (size_t i = 0; i < bytes.size();) {
        if (random() % 8 == 0) { // a printable run
            for (size_t n = random() % 40 + 1; n && i < bytes.size(); --n)
                bytes[i++] = static_cast<char>(' ' + random() % 95);
        } else {
            for (size_t n = random() % 64 + 1; n && i < bytes.size(); --n)
                bytes[i++] = static_cast<char>(random() % 32);
        }
    }
    WriteFile(path, bytes);
}

} // namespace

int main(int argc, char** argv)
{
    const std::string dir = argc > 1 ? argv[1] : ".";
    const std::string a = dir + "/compare-a.c", b = dir + "/compare-b.c",
                      bin = dir + "/strings.bin";
    MakeCompareFiles(a, b);
    MakeBinary(bin, 100);

    double ours = 1e9, theirs = 1e9;
    size_t listed = 0;
    for (int run = 0; run < 3; ++run) {
        const auto start = std::chrono::steady_clock::now();
        StreamInput first(a), second(b);
        CountingSink sink;
        CCompare(sink, CCompare::MODE_LISTING).Run(first, second);
        ours = std::min(ours, Seconds(start));
        listed = sink.bytes;
        theirs = std::min(theirs, TimeCommand("diff " + a + " " + b + " >/dev/null"));
    }
    printf("compare 100,000 lines: ours %.3f s (%zu bytes listed), diff %.3f s, ratio %.2f\n", ours,
           listed, theirs, ours / theirs);

    PatternBuffer pattern;
    const char filter[] = "[ -~][ -~][ -~][ -~]+";
    CompilePattern(filter, static_cast<int>(strlen(filter)), &pattern);
    BuildFirstCharMap(&pattern); // as the tool does
    ours = theirs = 1e9;
    for (int run = 0; run < 3; ++run) {
        const auto start = std::chrono::steady_clock::now();
        StreamInput input(bin);
        ExtractSink sink;
        ExtractFromFile("strings.bin", input, &pattern, sink);
        ours = std::min(ours, Seconds(start));
        listed = sink.bytes;
        theirs = std::min(theirs, TimeCommand("strings -n 4 " + bin + " >/dev/null"));
    }
    printf("extract from 100 MB: ours %.3f s (%zu bytes listed), strings -n 4 %.3f s, ratio %.2f\n",
           ours, listed, theirs, ours / theirs);
    free(pattern.buffer);
    return 0;
}
