// The global search's floor and its data: "make DIR" writes the tree of
// 2,000 C-like files of 100 KB that bench/grep searches; "scan DIR TEXT
// [word]" runs the engine's line scan over DIR's *.c files natively, as the
// global search reads them but with no window and no log, and prints the
// time and the lines that matched.
#include "search/GrepLines.h"

#include <dirent.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <vector>

namespace
{

const int kFiles = 2000;
const size_t kFileSize = 100 * 1024;

// C-like lines; "frobnicate" about once in 2,000 lines, the word "tally"
// as often, and "tallying", which a word search passes over, ten times as
// often.
std::string MakeFile(int file)
{
    std::string text;
    char line[128];
    for (unsigned i = file * 7919u; text.size() < kFileSize; ++i) {
        if (i % 1999 == 0)
            snprintf(line, sizeof line, "    frobnicate(p, %u);\r\n", i);
        else if (i % 2003 == 7)
            snprintf(line, sizeof line, "    tally += n; /* %u */\r\n", i);
        else if (i % 199 == 3)
            snprintf(line, sizeof line, "    /* tallying the items of %u */\r\n", i);
        else if (i % 4 == 0)
            snprintf(line, sizeof line, "static int value_%u(struct item* p, int n)\r\n", i);
        else if (i % 4 == 1)
            snprintf(line, sizeof line, "    int total = n * %u + p->count;\r\n", i % 97);
        else if (i % 4 == 2)
            snprintf(line, sizeof line, "\tif (total > %u) /* clamp */\r\n", i);
        else
            snprintf(line, sizeof line, "    return total;\r\n");
        text += line;
    }
    return text;
}

int Make(const std::string& dir)
{
    for (int i = 0; i < kFiles; ++i) {
        const std::string path = dir + "/f" + std::to_string(i) + ".c";
        const std::string text = MakeFile(i);
        FILE* file = fopen(path.c_str(), "wb");
        if (!file || fwrite(text.data(), 1, text.size(), file) != text.size() || fclose(file)) {
            perror(path.c_str());
            return 1;
        }
    }
    return 0;
}

int Scan(const std::string& dir, const std::string& text, bool word)
{
    PatternBuffer pattern;
    const std::string source = word ? "\\<" + text + "\\>" : text;
    if (CompilePattern(source.data(), static_cast<int>(source.size()), &pattern) != PATTERN_OK)
        return 1;
    BuildFirstCharMap(&pattern);
    const auto start = std::chrono::steady_clock::now();
    std::vector<std::string> names;
    if (DIR* d = opendir(dir.c_str())) {
        while (dirent* entry = readdir(d))
            if (strlen(entry->d_name) > 2 &&
                strcmp(entry->d_name + strlen(entry->d_name) - 2, ".c") == 0)
                names.push_back(dir + "/" + entry->d_name);
        closedir(d);
    }
    std::sort(names.begin(), names.end());
    long hits = 0;
    for (const std::string& name : names) {
        FILE* file = fopen(name.c_str(), "rb");
        if (!file)
            continue;
        TextLineReader reader(
            [file](char* buffer, size_t size) { return fread(buffer, 1, size, file); });
        hits += GrepLines(reader, &pattern, nullptr);
        fclose(file);
    }
    const double seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    printf("%s|engine line scan, native (floor)|%.3f|%ld\n", text.c_str(), seconds, hits);
    free(pattern.buffer);
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc >= 3 && strcmp(argv[1], "make") == 0)
        return Make(argv[2]);
    if (argc >= 4 && strcmp(argv[1], "scan") == 0)
        return Scan(argv[2], argv[3], argc > 4 && strcmp(argv[4], "word") == 0);
    fprintf(stderr, "usage: grep_floor make DIR | scan DIR TEXT [word]\n");
    return 2;
}
