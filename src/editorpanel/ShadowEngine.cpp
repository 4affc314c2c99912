#include "editorpanel/ShadowEngine.h"

#include "params/CheckedAccess.h"

namespace zelvatone {

namespace {

// What a host of the editor would be told; the panel asks for none of it.
constexpr SynthIdentity kIdentity{.numInputs = 0,
                                  .numOutputs = 2,
                                  .effectName = "Zelvatone",
                                  .vendorName = "Quillfeather",
                                  .productName = "Zelvatone",
                                  .vendorVersion = 1};

} // namespace

ShadowEngine::ShadowEngine() : SynthEngine(0, kIdentity) {
    programs.push_back(makeDefaultProgram());
    currentProgram = &programs.front();
}

SynthParameter& ShadowEngine::parameter(ParameterIndex index) const {
    return *checkedAt(currentProgram->parameters, index);
}

} // namespace zelvatone
