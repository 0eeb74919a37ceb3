// The page's journal replayed under Node, with no browser and no page script: the game's whole
// state at its end, as the headless driver dumps it, for the soak to compare with the page's.
//   quorvel_replay.js JOURNAL
#include <fstream>
#include <iostream>

#include "form_paths.h"
#include "session.h"

int main(int argc, char** argv) {
  std::ifstream journal(argc == 2 ? argv[1] : "");
  quorvel::Session session;
  std::string bad;
  if (!journal || !quorvel::replay(session, journal, bad) || !session.form) {
    std::cerr << "replay: " << (bad.empty() ? "no journal to replay" : bad) << "\n";
    return 2;
  }
  std::cout << quorvel::FormPaths(*session.form).dump() << "\n";
}
