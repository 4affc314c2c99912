// Renders every program's phrase here, and compares with what the native instrument rendered.

const hashesIn = data => data.hashes ?? data.programs?.map(program => program.sha256 ?? program.hash) ?? Object.values(data);

export class Comparison {
    constructor(programs, hashPhrase) {
        this.programs = programs;
        this.hashPhrase = hashPhrase;
        this.button = document.getElementById("compare");
        this.verdict = document.getElementById("verdict");
        this.cells = programs.map(({ index, name }) => {
            const cell = document.createElement("li");
            cell.textContent = index;
            cell.title = name;
            return cell;
        });
        document.getElementById("proofs").append(...this.cells);
        this.button.addEventListener("click", () => this.run());
    }

    async run() {
        this.button.disabled = true;
        for (const cell of this.cells) cell.className = "";
        try {
            const response = await fetch("hashes.json");
            if (!response.ok) throw new Error(`hashes.json: ${response.status}`);
            await this.compare(hashesIn(await response.json()));
        } catch (error) {
            this.verdict.value = `Not compared: ${error.message}`;
        }
        this.button.disabled = false;
    }

    async compare(hashes) {
        let same = 0;
        for (const { index, name } of this.programs) {
            const cell = this.cells[index];
            cell.className = "rendering";
            this.verdict.value = `${same} of ${index} so far …`;
            await new Promise(done => setTimeout(done)); // the page is drawn
            const isSame = (await this.hashPhrase(index)) === hashes[index];
            same += isSame;
            cell.className = isSame ? "equal" : "different";
            cell.setAttribute("aria-label", `${index} ${name}: ${isSame ? "the same" : "different"}`);
        }
        this.verdict.value = `${same} of ${this.programs.length} are the same, bit for bit.`;
        this.verdict.className = same === this.programs.length ? "equal" : "different";
    }
}
