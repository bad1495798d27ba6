// Search throughput of the pattern engine over a large generated C-like
// text, side by side with regexec, std::regex and grep on the same file.
//
// Usage: pattern_bench [file] [megabytes] [row]. The file is generated when
// it is missing or shorter than asked for; a row name limits the run to the
// rows whose names contain it.
#include "search/Pattern.h"

#include <regex.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <chrono>
#include <regex>
#include <string>
#include <vector>

namespace
{

struct Row {
    const char* name;
    const char* ours; // our dialect, also given to regexec and grep
    const char* ecma; // the same search for std::regex
    bool fold;
};

const Row kRows[] = {
    {"rare literal", "frobnicate", "frobnicate", false},
    {"common literal", "return", "return", false},
    {"word", "\\<count\\>", "\\bcount\\b", false},
    {"set with repeat", "0x[0-9a-f][0-9a-f]*", "0x[0-9a-f][0-9a-f]*", false},
    {"anchored", "^#include", "^#include", false},
    {"folded literal", "error", "error", true},
    {"defeats filter", ".*x", ".*x", false},
    {"macro call", "[A-Z][A-Z_]*(", "[A-Z][A-Z_]*\\(", false},
    {"dot run", "if (.*==", "if \\(.*==", false},
    {"leading blanks", "^[ \t]*}", "^[ \\t]*\\}", false},
};

class Random
{
  public:
    uint32_t Next()
    {
        m_state = m_state * 1103515245u + 12345u;
        return m_state >> 8;
    }
    uint32_t Below(uint32_t n) { return Next() % n; }
    const char* Pick(const std::vector<const char*>& words) { return words[Below(words.size())]; }

  private:
    uint32_t m_state = 12345;
};

std::string Line(Random& r)
{
    static const std::vector<const char*> names = {
        "count", "index", "buffer", "length", "node", "head", "item",  "value", "result", "offset",
        "size",  "flags", "state",  "next",   "prev", "key",  "entry", "table", "width"};
    static const std::vector<const char*> types = {"int",           "long",     "char *", "size_t",
                                                   "struct node *", "unsigned", "void *"};
    static const std::vector<const char*> macros = {"MAX_SIZE",     "ASSERT", "CHECK_ERROR",
                                                    "LIST_FOREACH", "MIN",    "TRACE_ENTRY"};
    static const std::vector<const char*> headers = {"stdio.h", "stdlib.h", "string.h", "list.h",
                                                     "table.h"};
    char buf[256];
    const char* a = r.Pick(names);
    const char* b = r.Pick(names);
    switch (r.Below(24)) {
    case 0:
        snprintf(buf, sizeof buf, "#include <%s>", r.Pick(headers));
        break;
    case 1:
        snprintf(buf, sizeof buf, "static %s %s_%s(%s %s, %s %s)", r.Pick(types), a, b,
                 r.Pick(types), a, r.Pick(types), b);
        break;
    case 2:
        snprintf(buf, sizeof buf, "{");
        break;
    case 3:
        snprintf(buf, sizeof buf, "}");
        break;
    case 4:
    case 5:
        snprintf(buf, sizeof buf, "    if (%s->%s == %u) {", a, b, r.Below(100));
        break;
    case 6:
        snprintf(buf, sizeof buf, "        return %s;", a);
        break;
    case 7:
        snprintf(buf, sizeof buf, "    }");
        break;
    case 8:
    case 9:
        snprintf(buf, sizeof buf, "    %s = %s + 0x%x;", a, b, r.Below(65536));
        break;
    case 10:
        snprintf(buf, sizeof buf, "    for (%s = 0; %s < %s; %s++) {", a, a, b, a);
        break;
    case 11:
        snprintf(buf, sizeof buf, "        %s(%s, %s);", r.Pick(macros), a, b);
        break;
    case 12:
        snprintf(buf, sizeof buf, "    /* %s holds the %s of the %s */", a, b, r.Pick(names));
        break;
    case 13:
        snprintf(buf, sizeof buf, "#define %s %u", r.Pick(macros), r.Below(4096));
        break;
    case 14:
        snprintf(buf, sizeof buf, "    %s %s = %s[%s];", r.Pick(types), a, b, r.Pick(names));
        break;
    case 15:
        snprintf(buf, sizeof buf, "    %s->%s = %s;", a, b, r.Pick(names));
        break;
    case 16:
        if (r.Below(50) == 0)
            snprintf(buf, sizeof buf, "    /* Error: %s is out of range */", a);
        else
            snprintf(buf, sizeof buf, "    %s += %s * %u;", a, b, r.Below(10));
        break;
    case 17:
        snprintf(buf, sizeof buf, "    while (%s != NULL && %s->%s > 0)", a, a, b);
        break;
    case 18:
        snprintf(buf, sizeof buf, "%s", "");
        break;
    case 19:
        if (r.Below(20000) == 0)
            snprintf(buf, sizeof buf, "    frobnicate(%s);", a);
        else
            snprintf(buf, sizeof buf, "    %s = %s(%s);", a, b, r.Pick(names));
        break;
    default:
        snprintf(buf, sizeof buf, "    %s = %s;", a, b);
        break;
    }
    return buf;
}

bool Generate(const char* path, size_t bytes)
{
    FILE* f = fopen(path, "wb");
    if (!f)
        return false;
    Random r;
    std::string chunk;
    size_t written = 0;
    while (written < bytes) {
        chunk.clear();
        while (chunk.size() < (1 << 20)) {
            chunk += Line(r);
            chunk += '\n';
        }
        fwrite(chunk.data(), 1, chunk.size(), f);
        written += chunk.size();
    }
    return fclose(f) == 0;
}

std::string Load(const char* path)
{
    std::string text;
    FILE* f = fopen(path, "rb");
    if (!f)
        return text;
    fseek(f, 0, SEEK_END);
    text.resize(static_cast<size_t>(ftell(f)));
    fseek(f, 0, SEEK_SET);
    if (fread(&text[0], 1, text.size(), f) != text.size())
        text.clear();
    fclose(f);
    return text;
}

double Seconds(std::chrono::steady_clock::time_point since)
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - since).count();
}

// Each engine counts the lines that hold a match, as grep -c does.
int NextLine(const std::string& text, int pos)
{
    const void* nl = memchr(text.data() + pos, '\n', text.size() - pos);
    return nl ? static_cast<int>(static_cast<const char*>(nl) - text.data()) + 1
              : static_cast<int>(text.size());
}

long CountOurs(const Row& row, const std::string& text)
{
    PatternBuffer pb;
    pb.fold_case = row.fold;
    if (CompilePattern(row.ours, static_cast<int>(strlen(row.ours)), &pb) != PATTERN_OK)
        return -1;
    BuildFirstCharMap(&pb);
    long count = 0;
    int size = static_cast<int>(text.size());
    for (int start = 0; start < size;) {
        int pos = SearchPattern(&pb, text.data(), size, start, size - start, nullptr);
        if (pos == MATCH_STACK_EXHAUSTED)
            count = -2;
        if (pos < 0)
            break;
        count++;
        start = NextLine(text, pos);
    }
    free(pb.buffer);
    return count;
}

long CountRegexec(const Row& row, const std::string& text)
{
    regex_t re;
    if (regcomp(&re, row.ours, REG_NEWLINE | (row.fold ? REG_ICASE : 0)) != 0)
        return -1;
    long count = 0;
    int size = static_cast<int>(text.size());
    for (int start = 0; start < size;) {
        regmatch_t m[1];
        m[0].rm_so = start;
        m[0].rm_eo = size;
        if (regexec(&re, text.data(), 1, m, REG_STARTEND) != 0)
            break;
        count++;
        start = NextLine(text, static_cast<int>(m[0].rm_so));
    }
    regfree(&re);
    return count;
}

long CountStdRegex(const Row& row, const std::string& text)
{
    auto flags = std::regex::ECMAScript | std::regex::multiline;
    if (row.fold)
        flags |= std::regex::icase;
    std::regex re(row.ecma, flags);
    long count = 0;
    int size = static_cast<int>(text.size());
    std::cmatch m;
    for (int start = 0; start < size;) {
        auto how = start > 0 ? std::regex_constants::match_prev_avail
                             : std::regex_constants::match_default;
        if (!std::regex_search(text.data() + start, text.data() + size, m, re, how))
            break;
        count++;
        start = NextLine(text, start + static_cast<int>(m.position(0)));
    }
    return count;
}

long CountGrep(const Row& row, const char* path)
{
    std::string command = "LC_ALL=C grep -c ";
    if (row.fold)
        command += "-i ";
    command += "-e '";
    command += row.ours;
    command += "' '";
    command += path;
    command += "'";
    FILE* p = popen(command.c_str(), "r");
    if (!p)
        return -1;
    long count = -1;
    if (fscanf(p, "%ld", &count) != 1)
        count = -1;
    pclose(p);
    return count;
}

// The best of `runs` runs, against the noise of a shared machine.
template <typename F> double Time(F f, long& count, int runs = 3)
{
    double best = 0;
    for (int i = 0; i < runs; ++i) {
        auto t0 = std::chrono::steady_clock::now();
        count = f();
        double t = Seconds(t0);
        if (i == 0 || t < best)
            best = t;
    }
    return best;
}

} // namespace

int main(int argc, char** argv)
{
    const char* path = argc > 1 ? argv[1] : "pattern-bench.txt";
    size_t megabytes = argc > 2 ? strtoul(argv[2], nullptr, 10) : 100;
    size_t bytes = megabytes << 20;
    std::string text = Load(path);
    if (text.size() < bytes) {
        if (!Generate(path, bytes)) {
            fprintf(stderr, "cannot write %s\n", path);
            return 1;
        }
        text = Load(path);
    }
    // std::regex is far slower; it gets a part of the text.
    std::string part = text.substr(0, NextLine(text, static_cast<int>(text.size() / 25)));
    double mb = text.size() / 1048576.0;
    double partMb = part.size() / 1048576.0;
    printf("%.1f MB of text, std::regex on the first %.1f MB\n\n", mb, partMb);
    printf("%-16s %-22s %9s %9s %9s %9s %8s %8s  %s\n", "row", "pattern", "ours", "regexec", "std",
           "grep", "/regexec", "/grep", "lines (ours, regexec, grep)");
    const char* only = argc > 3 ? argv[3] : "";
    for (const Row& row : kRows) {
        if (!strstr(row.name, only))
            continue;
        long ours, theirs, std, grep;
        double tOurs = Time([&] { return CountOurs(row, text); }, ours);
        double tRegexec = Time([&] { return CountRegexec(row, text); }, theirs);
        double tStd = Time([&] { return CountStdRegex(row, part); }, std, 1);
        double tGrep = Time([&] { return CountGrep(row, path); }, grep);
        std::string shown = row.ours;
        for (char& c : shown)
            if (c == '\t')
                c = 't';
        if (row.fold)
            shown += " (fold)";
        printf("%-16s %-22s %9.0f %9.0f %9.0f %9.0f %8.2f %8.2f  %ld %ld %ld\n", row.name,
               shown.c_str(), mb / tOurs, mb / tRegexec, partMb / tStd, mb / tGrep,
               tRegexec / tOurs, tGrep / tOurs, ours, theirs, grep);
        fflush(stdout);
    }
    printf("\nMB/s; /regexec and /grep are how many times faster ours is.\n");
    return 0;
}
