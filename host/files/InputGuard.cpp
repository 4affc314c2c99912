#include "host/files/InputGuard.h"

#include "host/Error.h"
#include "host/text/Format.h"

#include <system_error>

namespace zelvatone {

namespace {

namespace fs = std::filesystem;

bool isSameFile(const fs::path& one, const fs::path& other) {
    std::error_code error; // of files that are not there yet
    if (fs::equivalent(one, other, error)) {
        return true;
    }
    const fs::path wholeOne = fs::weakly_canonical(one, error);
    return !error && wholeOne == fs::weakly_canonical(other, error) && !error;
}

} // namespace

void checkOutputs(const std::vector<fs::path>& outputs, const std::vector<fs::path>& inputs) {
    for (auto output = outputs.begin(); output != outputs.end(); ++output) {
        for (const fs::path& input : inputs) {
            if (isSameFile(*output, input)) {
                throw InputError(
                    formatText("cannot write {}: it is the same file as {}, which is read",
                               output->string(), input.string()));
            }
        }
        for (auto other = outputs.begin(); other != output; ++other) {
            if (isSameFile(*output, *other)) {
                throw InputError(formatText("cannot write {} twice: {} is the same file",
                                            output->string(), other->string()));
            }
        }
    }
}

} // namespace zelvatone
