#include "live/alsa/AlsaLibrary.h"

#include "live/FunctionFinder.h"

namespace zelvatone::alsa {

namespace {

void findSound(FunctionFinder& finder, Library& functions) {
    finder.find(functions.errorSetHandler, "snd_lib_error_set_handler");
    finder.find(functions.errorText, "snd_strerror");
    finder.find(functions.deviceNameHint, "snd_device_name_hint");
    finder.find(functions.deviceNameGetHint, "snd_device_name_get_hint");
    finder.find(functions.deviceNameFreeHint, "snd_device_name_free_hint");
    finder.find(functions.pcmOpen, "snd_pcm_open");
    finder.find(functions.pcmClose, "snd_pcm_close");
    finder.find(functions.pcmSetParams, "snd_pcm_set_params");
    finder.find(functions.pcmGetParams, "snd_pcm_get_params");
    finder.find(functions.pcmWrite, "snd_pcm_writei");
    finder.find(functions.pcmRecover, "snd_pcm_recover");
}

void findSequencer(FunctionFinder& finder, Library& functions) {
    finder.find(functions.seqOpen, "snd_seq_open");
    finder.find(functions.seqClose, "snd_seq_close");
    finder.find(functions.seqSetClientName, "snd_seq_set_client_name");
    finder.find(functions.seqClientId, "snd_seq_client_id");
    finder.find(functions.seqCreatePort, "snd_seq_create_simple_port");
    finder.find(functions.seqConnectFrom, "snd_seq_connect_from");
    finder.find(functions.seqPollDescriptors, "snd_seq_poll_descriptors");
    finder.find(functions.seqEventInput, "snd_seq_event_input");
    finder.find(functions.seqNextClient, "snd_seq_query_next_client");
    finder.find(functions.seqNextPort, "snd_seq_query_next_port");
}

void findRecords(FunctionFinder& finder, Library& functions) {
    finder.find(functions.clientInfoMalloc, "snd_seq_client_info_malloc");
    finder.find(functions.clientInfoFree, "snd_seq_client_info_free");
    finder.find(functions.clientInfoGetClient, "snd_seq_client_info_get_client");
    finder.find(functions.clientInfoSetClient, "snd_seq_client_info_set_client");
    finder.find(functions.clientInfoGetName, "snd_seq_client_info_get_name");
    finder.find(functions.portInfoMalloc, "snd_seq_port_info_malloc");
    finder.find(functions.portInfoFree, "snd_seq_port_info_free");
    finder.find(functions.portInfoGetPort, "snd_seq_port_info_get_port");
    finder.find(functions.portInfoSetPort, "snd_seq_port_info_set_port");
    finder.find(functions.portInfoSetClient, "snd_seq_port_info_set_client");
    finder.find(functions.portInfoGetName, "snd_seq_port_info_get_name");
    finder.find(functions.portInfoGetCapability, "snd_seq_port_info_get_capability");
}

// Of the library's type.
void beSilent(const char* /*file*/, int /*line*/, const char* /*function*/, int /*error*/,
              const char* /*format*/, ...) {}

} // namespace

std::optional<Library> loadLibrary() {
    void* library = dlopen("libasound.so.2", RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        return std::nullopt;
    }
    Library functions{};
    FunctionFinder finder(library);
    findSound(finder, functions);
    findSequencer(finder, functions);
    findRecords(finder, functions);
    if (!finder.isComplete()) {
        return std::nullopt;
    }
    // Without a card it would explain itself in many lines.
    functions.errorSetHandler(beSilent);
    return functions;
}

} // namespace zelvatone::alsa
