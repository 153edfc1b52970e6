#include "programs/tarn/manual.h"

namespace kiva::tarn_program {

const programs::CommandNotes& manual_notes() {
  static const programs::CommandNotes told = [] {
    programs::CommandNotes notes;
    notes.summary = "compiler of the synchronous reactive language ZU";
    notes.synopsis = "[OPTIONS] FILE...";
    notes.examples = {
        {"tarn program.zu", "compiles every module of the file"},
        {"tarn -d out --module lift plant.zu", "compiles one of them into a folder"},
        {"tarn main.zu edge.zuc", "main.zu runs a module that has been compiled"},
        {"tarn --c thermostat.zuc", "writes a compiled module as C"},
        {"tarn --bench c lamp.stimuli lamp.zu", "writes it with a main that checks it"},
        {"tarn --equiv old.zuc new.zuc", "tells whether two modules do the same"},
        {"tarn --never 'green and walk' crossing.zu", "proves that it cannot be, or shows how"},
        {"tarn --eval 'on and not off' lamp.zuc", "shows what an expression is made of"},
        {"tarn --fmt *.zu", "lays source texts out"}};
    notes.statuses = programs::common_statuses();
    notes.statuses[1].second += " A property or an equivalence does not hold.";
    notes.statuses[2].second += " Or the modules cannot be compared.";
    notes.statuses.emplace_back("3", "A property was neither proved nor refuted in time.");
    notes.files = {{"MODULE.zuc", "a compiled module"},
                   {"MODULE.zuc.map", "where its signals stand in the source text"}};
    notes.see_also = {"kiva", "kiva-console"};
    return notes;
  }();
  return told;
}

}  // namespace kiva::tarn_program
