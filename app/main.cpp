// Free Quorvel: the desktop game.
#include <QApplication>
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QStyleFactory>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <utility>

#include "events/events.h"
#include "match_window.h"

namespace {

const char* const kVersion =
    "Free Quorvel 1.86\n"
    "License GPL-3.0-or-later: GNU GPL version 3 or later <https://gnu.org/licenses/gpl.html>.\n"
    "This is free software: you are free to change and redistribute it.\n"
    "There is NO WARRANTY, to the extent permitted by law.\n";

const char* const kNoDisplay =
    "quorvel: no graphical session to open the window in (neither DISPLAY nor WAYLAND_DISPLAY "
    "is set); to play from a script without one, use quorvel-drive\n";

bool hasEnv(const char* name) {
  const char* v = std::getenv(name);
  return v != nullptr && *v != '\0';
}

bool platformNamed(int argc, char** argv) {
  for (int i = 1; i < argc; ++i)
    if (std::strcmp(argv[i], "-platform") == 0 || std::strcmp(argv[i], "--platform") == 0)
      return true;
  return hasEnv("QT_QPA_PLATFORM");
}

// --help and --version answer before any window exists, so that they work without a display.
// Qt's own options (-platform, -style, ...) are left for QApplication to take.
void answerHelpOrVersion(int argc, char** argv, QCommandLineParser& parser) {
  QCoreApplication probe(argc, argv);
  parser.parse(QCoreApplication::arguments());
  if (parser.isSet(QStringLiteral("version"))) {
    std::fputs(kVersion, stdout);
    std::exit(0);
  }
  if (parser.isSet(QStringLiteral("help"))) parser.showHelp(0);
}

// The toolkit ends the program when its display cannot be reached; a person should read why
// in our words, not be told to reinstall. Its messages wait until the window is up.
QList<std::pair<QtMsgType, QString>> heldMessages;

void holdWhileStarting(QtMsgType type, const QMessageLogContext&, const QString& msg) {
  if (type == QtFatalMsg) {
    std::fputs(
        "quorvel: cannot open the window: the graphical session cannot be reached; to play "
        "from a script without one, use quorvel-drive\n",
        stderr);
    // The toolkit's own words follow, for whoever must find out why.
    std::fprintf(stderr, "quorvel: %s\n", qPrintable(msg));
    std::_Exit(1);
  }
  heldMessages.append({type, msg});
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication::setApplicationName(QStringLiteral("quorvel"));
  QCoreApplication::setApplicationVersion(QStringLiteral("1.86"));
  QCommandLineParser parser;
  parser.setApplicationDescription(
      QStringLiteral("Free Quorvel: soccer on two chessboards, played with a die."));
  parser.addHelpOption();
  parser.addVersionOption();
  answerHelpOrVersion(argc, argv, parser);

  if (!hasEnv("DISPLAY") && !hasEnv("WAYLAND_DISPLAY") && !platformNamed(argc, argv)) {
    std::fputs(kNoDisplay, stderr);
    return 1;
  }

  const QtMessageHandler usual = qInstallMessageHandler(holdWhileStarting);
  QApplication app(argc, argv);
  qInstallMessageHandler(usual);
  for (const auto& [type, msg] : std::as_const(heldMessages))
    qt_message_output(type, QMessageLogContext(), msg);
  heldMessages.clear();
  // What is left once Qt has taken its own options: unknown ones are named, status 1.
  parser.process(app);

  QApplication::setDesktopFileName(QStringLiteral("quorvel"));
  QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));

  // Each run starts from its own draws; the wait before the first Start stirs them further.
  auto form = quorvel::newMatchForm(std::random_device{}());
  quorvel::MatchWindow window(*form);
  window.show();
  window.startClock();
  return QApplication::exec();
}
