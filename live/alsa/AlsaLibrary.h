// The functions of the ALSA library that are used, loaded at run time: the program starts without.
#pragma once

#include <alsa/asoundlib.h>

#include <optional>

namespace zelvatone::alsa {

// Each by its name in the library, without the front part.
struct Library {
    decltype(&::snd_lib_error_set_handler) errorSetHandler;
    decltype(&::snd_strerror) errorText;

    decltype(&::snd_device_name_hint) deviceNameHint;
    decltype(&::snd_device_name_get_hint) deviceNameGetHint;
    decltype(&::snd_device_name_free_hint) deviceNameFreeHint;

    decltype(&::snd_pcm_open) pcmOpen;
    decltype(&::snd_pcm_close) pcmClose;
    decltype(&::snd_pcm_set_params) pcmSetParams;
    decltype(&::snd_pcm_get_params) pcmGetParams;
    decltype(&::snd_pcm_writei) pcmWrite;
    decltype(&::snd_pcm_recover) pcmRecover;

    decltype(&::snd_seq_open) seqOpen;
    decltype(&::snd_seq_close) seqClose;
    decltype(&::snd_seq_set_client_name) seqSetClientName;
    decltype(&::snd_seq_client_id) seqClientId;
    decltype(&::snd_seq_create_simple_port) seqCreatePort;
    decltype(&::snd_seq_connect_from) seqConnectFrom;
    decltype(&::snd_seq_poll_descriptors) seqPollDescriptors;
    decltype(&::snd_seq_event_input) seqEventInput;
    decltype(&::snd_seq_query_next_client) seqNextClient;
    decltype(&::snd_seq_query_next_port) seqNextPort;

    decltype(&::snd_seq_client_info_malloc) clientInfoMalloc;
    decltype(&::snd_seq_client_info_free) clientInfoFree;
    decltype(&::snd_seq_client_info_get_client) clientInfoGetClient;
    decltype(&::snd_seq_client_info_set_client) clientInfoSetClient;
    decltype(&::snd_seq_client_info_get_name) clientInfoGetName;

    decltype(&::snd_seq_port_info_malloc) portInfoMalloc;
    decltype(&::snd_seq_port_info_free) portInfoFree;
    decltype(&::snd_seq_port_info_get_port) portInfoGetPort;
    decltype(&::snd_seq_port_info_set_port) portInfoSetPort;
    decltype(&::snd_seq_port_info_set_client) portInfoSetClient;
    decltype(&::snd_seq_port_info_get_name) portInfoGetName;
    decltype(&::snd_seq_port_info_get_capability) portInfoGetCapability;
};

// None where it is not installed. It stays loaded, and prints nothing.
std::optional<Library> loadLibrary();

} // namespace zelvatone::alsa
