// Our records beside those of an independent copy of the published headers: Debian's dpf-source.
// Only this program includes them; it is neither installed nor shipped.
#include "clap/abi/Extensions.h"

#include <src/clap/ext/audio-ports.h>
#include <src/clap/ext/gui.h>
#include <src/clap/ext/latency.h>
#include <src/clap/ext/note-ports.h>
#include <src/clap/ext/params.h>
#include <src/clap/ext/state.h>
#include <src/clap/ext/thread-check.h>
#include <src/clap/ext/timer-support.h>

#include <src/clap/entry.h>
#include <src/clap/plugin-factory.h>

#include <gtest/gtest.h>

#include <cstddef>

namespace zelvatone::clap {

namespace {

// The same field of our record and of the published one: place and size.
#define EXPECT_SAME_FIELD(Ours, ourField, Published, publishedField)                               \
    EXPECT_EQ(offsetof(Ours, ourField), offsetof(Published, publishedField));                      \
    EXPECT_EQ(sizeof(Ours::ourField), sizeof(Published::publishedField))

TEST(ClapRecords, LifeCycleHasThePublishedLayout) {
    EXPECT_EQ(sizeof(Version), sizeof(clap_version_t));
    EXPECT_EQ(sizeof(Entry), sizeof(clap_plugin_entry_t));
    EXPECT_SAME_FIELD(Entry, init, clap_plugin_entry_t, init);
    EXPECT_SAME_FIELD(Entry, deinit, clap_plugin_entry_t, deinit);
    EXPECT_SAME_FIELD(Entry, getFactory, clap_plugin_entry_t, get_factory);
    EXPECT_EQ(sizeof(PluginFactory), sizeof(clap_plugin_factory_t));
    EXPECT_SAME_FIELD(PluginFactory, createPlugin, clap_plugin_factory_t, create_plugin);
    EXPECT_SAME_FIELD(PluginFactory, getPluginDescriptor, clap_plugin_factory_t,
                      get_plugin_descriptor);
    EXPECT_EQ(sizeof(Descriptor), sizeof(clap_plugin_descriptor_t));
    EXPECT_SAME_FIELD(Descriptor, id, clap_plugin_descriptor_t, id);
    EXPECT_SAME_FIELD(Descriptor, pluginVersion, clap_plugin_descriptor_t, version);
    EXPECT_SAME_FIELD(Descriptor, features, clap_plugin_descriptor_t, features);
    EXPECT_EQ(sizeof(Host), sizeof(clap_host_t));
    EXPECT_SAME_FIELD(Host, hostData, clap_host_t, host_data);
    EXPECT_SAME_FIELD(Host, hostVersion, clap_host_t, version);
    EXPECT_SAME_FIELD(Host, getExtension, clap_host_t, get_extension);
    EXPECT_SAME_FIELD(Host, requestCallback, clap_host_t, request_callback);
    EXPECT_EQ(sizeof(Plugin), sizeof(clap_plugin_t));
    EXPECT_SAME_FIELD(Plugin, pluginData, clap_plugin_t, plugin_data);
    EXPECT_SAME_FIELD(Plugin, init, clap_plugin_t, init);
    EXPECT_SAME_FIELD(Plugin, activate, clap_plugin_t, activate);
    EXPECT_SAME_FIELD(Plugin, reset, clap_plugin_t, reset);
    EXPECT_SAME_FIELD(Plugin, process, clap_plugin_t, process);
    EXPECT_SAME_FIELD(Plugin, getExtension, clap_plugin_t, get_extension);
    EXPECT_SAME_FIELD(Plugin, onMainThread, clap_plugin_t, on_main_thread);
}

TEST(ClapRecords, BlocksHaveThePublishedLayout) {
    EXPECT_EQ(sizeof(AudioBuffer), sizeof(clap_audio_buffer_t));
    EXPECT_SAME_FIELD(AudioBuffer, channelCount, clap_audio_buffer_t, channel_count);
    EXPECT_SAME_FIELD(AudioBuffer, constantMask, clap_audio_buffer_t, constant_mask);
    EXPECT_EQ(sizeof(Process), sizeof(clap_process_t));
    EXPECT_SAME_FIELD(Process, frameCount, clap_process_t, frames_count);
    EXPECT_SAME_FIELD(Process, transport, clap_process_t, transport);
    EXPECT_SAME_FIELD(Process, audioOutputs, clap_process_t, audio_outputs);
    EXPECT_SAME_FIELD(Process, audioOutputCount, clap_process_t, audio_outputs_count);
    EXPECT_SAME_FIELD(Process, inEvents, clap_process_t, in_events);
    EXPECT_SAME_FIELD(Process, outEvents, clap_process_t, out_events);
    EXPECT_EQ(std::int32_t{kProcessError}, CLAP_PROCESS_ERROR);
    EXPECT_EQ(std::int32_t{kProcessContinue}, CLAP_PROCESS_CONTINUE);
    EXPECT_EQ(std::int32_t{kProcessSleep}, CLAP_PROCESS_SLEEP);
}

TEST(ClapRecords, EventsHaveThePublishedLayout) {
    EXPECT_EQ(sizeof(EventHeader), sizeof(clap_event_header_t));
    EXPECT_SAME_FIELD(EventHeader, time, clap_event_header_t, time);
    EXPECT_SAME_FIELD(EventHeader, space, clap_event_header_t, space_id);
    EXPECT_SAME_FIELD(EventHeader, type, clap_event_header_t, type);
    EXPECT_EQ(sizeof(NoteEvent), sizeof(clap_event_note_t));
    EXPECT_SAME_FIELD(NoteEvent, noteId, clap_event_note_t, note_id);
    EXPECT_SAME_FIELD(NoteEvent, channel, clap_event_note_t, channel);
    EXPECT_SAME_FIELD(NoteEvent, key, clap_event_note_t, key);
    EXPECT_SAME_FIELD(NoteEvent, velocity, clap_event_note_t, velocity);
    EXPECT_EQ(sizeof(ParamValueEvent), sizeof(clap_event_param_value_t));
    EXPECT_SAME_FIELD(ParamValueEvent, param, clap_event_param_value_t, param_id);
    EXPECT_SAME_FIELD(ParamValueEvent, cookie, clap_event_param_value_t, cookie);
    EXPECT_SAME_FIELD(ParamValueEvent, key, clap_event_param_value_t, key);
    EXPECT_SAME_FIELD(ParamValueEvent, value, clap_event_param_value_t, value);
    EXPECT_EQ(sizeof(ParamGestureEvent), sizeof(clap_event_param_gesture_t));
    EXPECT_SAME_FIELD(ParamGestureEvent, param, clap_event_param_gesture_t, param_id);
    EXPECT_EQ(sizeof(TransportEvent), sizeof(clap_event_transport_t));
    EXPECT_SAME_FIELD(TransportEvent, flags, clap_event_transport_t, flags);
    EXPECT_SAME_FIELD(TransportEvent, tempo, clap_event_transport_t, tempo);
    EXPECT_SAME_FIELD(TransportEvent, signatureDenominator, clap_event_transport_t, tsig_denom);
    EXPECT_EQ(sizeof(MidiEvent), sizeof(clap_event_midi_t));
    EXPECT_SAME_FIELD(MidiEvent, port, clap_event_midi_t, port_index);
    EXPECT_SAME_FIELD(MidiEvent, data, clap_event_midi_t, data);
    EXPECT_EQ(sizeof(InputEvents), sizeof(clap_input_events_t));
    EXPECT_SAME_FIELD(InputEvents, get, clap_input_events_t, get);
    EXPECT_EQ(sizeof(OutputEvents), sizeof(clap_output_events_t));
    EXPECT_SAME_FIELD(OutputEvents, tryPush, clap_output_events_t, try_push);
}

TEST(ClapRecords, EventsHaveThePublishedNumbers) {
    EXPECT_EQ(kCoreEventSpace, CLAP_CORE_EVENT_SPACE_ID);
    EXPECT_EQ(int{kNoteOn}, CLAP_EVENT_NOTE_ON);
    EXPECT_EQ(int{kNoteOff}, CLAP_EVENT_NOTE_OFF);
    EXPECT_EQ(int{kNoteChoke}, CLAP_EVENT_NOTE_CHOKE);
    EXPECT_EQ(int{kParamValue}, CLAP_EVENT_PARAM_VALUE);
    EXPECT_EQ(int{kParamGestureBegin}, CLAP_EVENT_PARAM_GESTURE_BEGIN);
    EXPECT_EQ(int{kParamGestureEnd}, CLAP_EVENT_PARAM_GESTURE_END);
    EXPECT_EQ(int{kTransport}, CLAP_EVENT_TRANSPORT);
    EXPECT_EQ(int{kMidi}, CLAP_EVENT_MIDI);
    EXPECT_EQ(std::uint32_t{kTransportHasTempo}, std::uint32_t{CLAP_TRANSPORT_HAS_TEMPO});
}

TEST(ClapRecords, PortsAndStatesHaveThePublishedLayout) {
    EXPECT_EQ(sizeof(AudioPortInfo), sizeof(clap_audio_port_info_t));
    EXPECT_SAME_FIELD(AudioPortInfo, flags, clap_audio_port_info_t, flags);
    EXPECT_SAME_FIELD(AudioPortInfo, channelCount, clap_audio_port_info_t, channel_count);
    EXPECT_SAME_FIELD(AudioPortInfo, portType, clap_audio_port_info_t, port_type);
    EXPECT_SAME_FIELD(AudioPortInfo, inPlacePair, clap_audio_port_info_t, in_place_pair);
    EXPECT_EQ(sizeof(PluginAudioPorts), sizeof(clap_plugin_audio_ports_t));
    EXPECT_STREQ(kAudioPortsId, CLAP_EXT_AUDIO_PORTS);
    EXPECT_STREQ(kStereoPort, CLAP_PORT_STEREO);
    EXPECT_EQ(int{kAudioPortIsMain}, CLAP_AUDIO_PORT_IS_MAIN);
    EXPECT_EQ(sizeof(NotePortInfo), sizeof(clap_note_port_info_t));
    EXPECT_SAME_FIELD(NotePortInfo, supportedDialects, clap_note_port_info_t, supported_dialects);
    EXPECT_SAME_FIELD(NotePortInfo, name, clap_note_port_info_t, name);
    EXPECT_EQ(sizeof(PluginNotePorts), sizeof(clap_plugin_note_ports_t));
    EXPECT_STREQ(kNotePortsId, CLAP_EXT_NOTE_PORTS);
    EXPECT_EQ(int{kDialectClap}, CLAP_NOTE_DIALECT_CLAP);
    EXPECT_EQ(int{kDialectMidi}, CLAP_NOTE_DIALECT_MIDI);
    EXPECT_EQ(sizeof(PluginState), sizeof(clap_plugin_state_t));
    EXPECT_EQ(sizeof(InputStream), sizeof(clap_istream_t));
    EXPECT_EQ(sizeof(OutputStream), sizeof(clap_ostream_t));
    EXPECT_EQ(sizeof(HostState), sizeof(clap_host_state_t));
    EXPECT_STREQ(kStateId, CLAP_EXT_STATE);
    EXPECT_EQ(sizeof(PluginLatency), sizeof(clap_plugin_latency_t));
    EXPECT_STREQ(kLatencyId, CLAP_EXT_LATENCY);
    EXPECT_EQ(sizeof(HostThreadCheck), sizeof(clap_host_thread_check_t));
    EXPECT_STREQ(kThreadCheckId, CLAP_EXT_THREAD_CHECK);
    EXPECT_STREQ(kPluginFactoryId, CLAP_PLUGIN_FACTORY_ID);
}

TEST(ClapRecords, ParametersHaveThePublishedLayout) {
    EXPECT_EQ(sizeof(ParamInfo), sizeof(clap_param_info_t));
    EXPECT_SAME_FIELD(ParamInfo, flags, clap_param_info_t, flags);
    EXPECT_SAME_FIELD(ParamInfo, cookie, clap_param_info_t, cookie);
    EXPECT_SAME_FIELD(ParamInfo, name, clap_param_info_t, name);
    EXPECT_SAME_FIELD(ParamInfo, module, clap_param_info_t, module);
    EXPECT_SAME_FIELD(ParamInfo, min, clap_param_info_t, min_value);
    EXPECT_SAME_FIELD(ParamInfo, max, clap_param_info_t, max_value);
    EXPECT_SAME_FIELD(ParamInfo, defaultValue, clap_param_info_t, default_value);
    EXPECT_EQ(sizeof(PluginParams), sizeof(clap_plugin_params_t));
    EXPECT_SAME_FIELD(PluginParams, valueToText, clap_plugin_params_t, value_to_text);
    EXPECT_SAME_FIELD(PluginParams, textToValue, clap_plugin_params_t, text_to_value);
    EXPECT_SAME_FIELD(PluginParams, flush, clap_plugin_params_t, flush);
    EXPECT_EQ(sizeof(HostParams), sizeof(clap_host_params_t));
    EXPECT_SAME_FIELD(HostParams, requestFlush, clap_host_params_t, request_flush);
    EXPECT_STREQ(kParamsId, CLAP_EXT_PARAMS);
    EXPECT_EQ(int{kParamIsStepped}, CLAP_PARAM_IS_STEPPED);
    EXPECT_EQ(int{kParamIsBypass}, CLAP_PARAM_IS_BYPASS);
    EXPECT_EQ(int{kParamIsAutomatable}, CLAP_PARAM_IS_AUTOMATABLE);
    EXPECT_EQ(int{kRescanValues}, CLAP_PARAM_RESCAN_VALUES);
}

TEST(ClapRecords, EditorAndTimersHaveThePublishedLayout) {
    EXPECT_EQ(sizeof(Window), sizeof(clap_window_t));
    EXPECT_SAME_FIELD(Window, api, clap_window_t, api);
    EXPECT_SAME_FIELD(Window, x11, clap_window_t, x11);
    EXPECT_SAME_FIELD(Window, pointer, clap_window_t, win32);
    EXPECT_EQ(sizeof(GuiResizeHints), sizeof(clap_gui_resize_hints_t));
    EXPECT_EQ(sizeof(PluginGui), sizeof(clap_plugin_gui_t));
    EXPECT_SAME_FIELD(PluginGui, setScale, clap_plugin_gui_t, set_scale);
    EXPECT_SAME_FIELD(PluginGui, getSize, clap_plugin_gui_t, get_size);
    EXPECT_SAME_FIELD(PluginGui, setParent, clap_plugin_gui_t, set_parent);
    EXPECT_SAME_FIELD(PluginGui, show, clap_plugin_gui_t, show);
    EXPECT_SAME_FIELD(PluginGui, hide, clap_plugin_gui_t, hide);
    EXPECT_EQ(sizeof(HostGui), sizeof(clap_host_gui_t));
    EXPECT_STREQ(kGuiId, CLAP_EXT_GUI);
    EXPECT_STREQ(kWindowX11, CLAP_WINDOW_API_X11);
    EXPECT_STREQ(kWindowWin32, CLAP_WINDOW_API_WIN32);
    EXPECT_EQ(sizeof(PluginTimerSupport), sizeof(clap_plugin_timer_support_t));
    EXPECT_EQ(sizeof(HostTimerSupport), sizeof(clap_host_timer_support_t));
    EXPECT_STREQ(kTimerSupportId, CLAP_EXT_TIMER_SUPPORT);
}

} // namespace

} // namespace zelvatone::clap
