// SPDX-License-Identifier: MIT
// libFuzzer's entry points for one target, chosen by QORFUZZ_TARGET when
// the program is built.
#include "qorfuzz.h"
#include "qorfuzzfixture_p.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

const QorFuzzTarget &target()
{
    static const QorFuzzTarget *found = [] {
        for (const QorFuzzTarget &t : QorFuzzTargets()) {
            if (std::strcmp(t.name, QORFUZZ_TARGET) == 0)
                return &t;
        }
        std::fprintf(stderr, "qorfuzz: no target named %s\n", QORFUZZ_TARGET);
        std::abort();
    }();
    return *found;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    QorFuzzEnsureApplication();
    // The target's input limit, unless the command line sets one: libFuzzer
    // reads its flags after this returns.
    for (int i = 1; i < *argc; ++i) {
        if (std::strncmp((*argv)[i], "-max_len=", 9) == 0)
            return 0;
    }
    static std::string maxLen = "-max_len=" + std::to_string(target().maxLength);
    static std::vector<char *> args;
    args.assign(*argv, *argv + *argc);
    args.insert(args.begin() + 1, maxLen.data());
    args.push_back(nullptr);
    *argc += 1;
    *argv = args.data();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *Data, size_t Size)
{
    return target().run(Data, Size);
}
