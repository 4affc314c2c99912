// The sound as an address and as a command.

// What the address asks for: {program, state, tempo}, each undefined when it is not there. A state is
// taken as it stands: its own escapes belong to it.
export function readAddress(hash) {
    const wanted = Object.fromEntries(hash.replace(/^#/, "").split("&").map(field => field.split("=", 2)));
    const number = name => (/^\d+(\.\d+)?$/.test(wanted[name]) ? Number(wanted[name]) : undefined);
    return { program: number("program"), state: wanted.state, tempo: number("tempo") };
}

export function writeAddress({ program, state, tempo }) {
    if (state !== undefined) return `#state=${state}`;
    return tempo === undefined ? `#program=${program}` : `#program=${program}&tempo=${tempo}`;
}

// The fewest digits that are read as this float again.
export function shortest(value) {
    for (let digits = 1; digits <= 9; ++digits) {
        const text = Number(value.toPrecision(digits));
        if (Math.fround(text) === Math.fround(value)) return text.toFixed(20).replace(/\.?0+$/, "");
    }
    return String(value);
}

// For a shell: as it stands, or in quotes.
export const shellWord = text => (/^[\w./=-]+$/.test(text) ? text : `'${text.replaceAll("'", "'\\''")}'`);

// `settings` are [parameter name, value] of what differs from the program.
export function renderCommand(number, program, settings) {
    const file = `${String(number).padStart(2, "0")}-${program.replace(/[^\w]+/g, "-")}.wav`;
    const sets = settings.map(([name, value]) => ` --set ${shellWord(`${name}=${shortest(value)}`)}`);
    return `zelvatone render song.mid -o ${file} --program ${shellWord(program)}${sets.join("")}`;
}

// The clipboard's own interface is missing on pages that are not secure.
export async function copy(text) {
    try {
        await navigator.clipboard.writeText(text);
        return true;
    } catch {
        const field = document.createElement("textarea");
        field.value = text;
        document.body.append(field);
        field.select();
        const isCopied = document.execCommand("copy");
        field.remove();
        return isCopied;
    }
}

export function download(bytes, name) {
    const link = document.createElement("a");
    link.href = URL.createObjectURL(new Blob([bytes], { type: "application/octet-stream" }));
    link.download = name;
    link.click();
    setTimeout(() => URL.revokeObjectURL(link.href), 1000);
}
