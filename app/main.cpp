// Free Quorvel: the desktop game.
#include <QApplication>
#include <QStyleFactory>
#include <random>

#include "events/events.h"
#include "match_window.h"
#include "pictures.h"

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  QApplication::setApplicationName(QStringLiteral("quorvel"));
  QApplication::setDesktopFileName(QStringLiteral("quorvel"));
  QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
  QApplication::setWindowIcon(quorvel::appIcon());

  // Each run starts from its own draws; the wait before the first Start stirs them further.
  auto form = quorvel::newMatchForm(std::random_device{}());
  quorvel::MatchWindow window(*form);
  window.show();
  window.startClock();
  return QApplication::exec();
}
