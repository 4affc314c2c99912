"""A client of JACK that plays messages at their samples and keeps the sound that comes in."""

import ctypes
from array import array

NO_START_SERVER, SERVER_NAME = 1, 4
AUDIO, MIDI = b"32 bit float mono audio", b"8 bit raw midi"
IS_INPUT, IS_OUTPUT = 1, 2


class JackTape:
    def __init__(self, server, name="tape"):
        """Raises OSError where there is no library or no server."""
        self.jack = ctypes.CDLL("libjack.so.0")
        for function in ["client_open", "port_register", "port_get_buffer"]:
            getattr(self.jack, f"jack_{function}").restype = ctypes.c_void_p
        self.jack.jack_midi_event_write.argtypes = [
            ctypes.c_void_p, ctypes.c_uint32, ctypes.c_char_p, ctypes.c_size_t]
        self.client = ctypes.c_void_p(self.jack.jack_client_open(
            name.encode(), NO_START_SERVER | SERVER_NAME, None, server.encode()))
        if not self.client:
            raise OSError("no JACK server")
        self.keys = self.port(b"keys", MIDI, IS_OUTPUT)
        self.inputs = [self.port(name, AUDIO, IS_INPUT) for name in (b"left", b"right")]
        self.messages = []  # (frame, bytes), by frame
        self.played = 0     # of them
        self.frame = 0      # the next
        self.isRolling = False
        self.blocks = []
        kind = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_uint32, ctypes.c_void_p)
        self.callback = kind(self.process)  # as long as the client
        self.jack.jack_set_process_callback(self.client, self.callback, None)
        self.jack.jack_activate(self.client)

    def port(self, name, kind, flags):
        return ctypes.c_void_p(self.jack.jack_port_register(
            self.client, name, kind, ctypes.c_ulong(flags), ctypes.c_ulong(0)))

    def buffer(self, port, frames):
        return ctypes.c_void_p(self.jack.jack_port_get_buffer(port, frames))

    def process(self, frames, _):
        keys = self.buffer(self.keys, frames)
        self.jack.jack_midi_clear_buffer(keys)
        while self.played < len(self.messages):
            frame, message = self.messages[self.played]
            if frame >= self.frame + frames:
                break
            self.jack.jack_midi_event_write(keys, max(frame - self.frame, 0), message,
                                            len(message))
            self.played += 1
        self.frame += frames
        if self.isRolling:
            self.blocks.append([ctypes.string_at(self.buffer(port, frames), 4 * frames)
                                for port in self.inputs])
        return 0

    def play(self, *messages):
        """At once."""
        self.messages += [(self.frame, bytes(message)) for message in messages]

    def connect(self, source, target):
        self.jack.jack_connect(self.client, source.encode(), target.encode())

    def setFreewheel(self, isOn):
        self.jack.jack_set_freewheel(self.client, int(isOn))

    def sound(self):
        """What was heard while it rolled: bytes of float samples, channels interleaved."""
        both = array("f")
        for left, right in self.blocks:
            pair = array("f", bytes(2 * len(left)))
            pair[0::2], pair[1::2] = array("f", left), array("f", right)
            both += pair
        return both.tobytes()

    def close(self):
        self.jack.jack_client_close(self.client)
