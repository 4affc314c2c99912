#include "host/preset/PresetWriter.h"

#include "host/Error.h"
#include "host/files/OutputFile.h"
#include "host/preset/PresetBytes.h"
#include "host/preset/PresetReader.h"
#include "host/text/Format.h"

namespace zelvatone {

void writePreset(const std::filesystem::path& path, const Preset& preset) {
    const auto bytes = presetBytes(preset);
    try {
        parsePreset(bytes); // a plug-in may report values that cannot be read back
    } catch (const InputError& error) {
        throw InputError(formatText("cannot write {}: {}", path.string(), error.what()));
    }
    OutputFile file(path);
    file.write(bytes.data(), static_cast<std::int64_t>(bytes.size()));
    file.commit();
}

} // namespace zelvatone
