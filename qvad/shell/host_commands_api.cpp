// Host commands run by modules (qvedCommand, qvedCmd) and keystrokes queued for the command line
// (sds_sendmessage).

#include "qvad/api/answers.h"
#include "qvad/api/data_list_buffers.h"
#include "qvad/api/host_session.h"
#include "qvad/shell/command_processor.h"

#include <cstdarg>

namespace {

using qvad::api::Answer;

// The first answer names a command, the answers after it go to its prompts; what that command leaves
// names the next command. Answers running out inside a command leave its prompts to the console.
int runAnswers(std::deque<Answer> answers) {
    qvad::api::AnswerFeed feed(std::move(answers), true);
    while (!feed.empty()) {
        const bool echo = qvad::api::echoing();
        Answer name = std::move(feed.answers().front());
        feed.answers().pop_front();
        if (name.kind != Answer::Kind::Text) return qvad::api::refuse(qvad::api::HostError::BadArgument);
        if (name.text.empty()) continue; // Enter between commands ends nothing
        if (echo) qvad::api::console().write("\nCommand: " + name.text + "\n");
        switch (qvad::shell::runCommand(name.text, qvad::shell::commandRunning())) {
        case qvad::shell::CommandOutcome::Done:
            break;
        case qvad::shell::CommandOutcome::Cancelled:
        case qvad::shell::CommandOutcome::InputEnded:
            return QV_CANCEL;
        case qvad::shell::CommandOutcome::Unknown:
        case qvad::shell::CommandOutcome::Failed:
            return QV_ERROR;
        }
    }
    return QV_NORM;
}

int runList(const qv_resbuf* list) {
    std::deque<Answer> answers;
    if (!qvad::api::answersFromList(list, answers))
        return qvad::api::refuse(qvad::api::HostError::BadArgument);
    return runAnswers(std::move(answers));
}

} // namespace

extern "C" {

QV_API int qvedCommand(int code, ...) {
    if (code == 0) return QV_NORM;
    va_list args;
    va_start(args, code);
    qv_resbuf* list = qvad::api::buildListFromArguments(code, args);
    va_end(args);
    if (!list) return QV_ERROR;
    const int status = qvad::api::guarded([&] { return runList(list); });
    qvutRelRb(list);
    return status;
}

QV_API int qvedCmd(const struct qv_resbuf* arguments) {
    return qvad::api::guarded([&] { return runList(arguments); });
}

QV_API int sds_sendmessage(const char* keystrokes) {
    if (!keystrokes) return qvad::api::refuse(qvad::api::HostError::BadArgument);
    return qvad::api::guarded([&] {
        std::deque<Answer> parsed;
        std::string pending;
        bool typing = false;
        auto finish = [&] {
            Answer answer;
            answer.text = std::move(pending);
            parsed.push_back(std::move(answer));
            pending.clear();
            typing = false;
        };
        for (const char* c = keystrokes; *c; ++c) {
            if (c[0] == '^' && (c[1] == 'C' || c[1] == 'c')) {
                if (typing) finish();
                Answer cancel;
                cancel.kind = Answer::Kind::Cancel;
                parsed.push_back(std::move(cancel));
                ++c;
            } else if (c[0] == '^' && (c[1] == 'P' || c[1] == 'p')) {
                ++c; // menu echo: there are no menus
            } else if (*c == ' ' || *c == '\n' || *c == '\r') {
                if (*c == '\r' && c[1] == '\n') ++c;
                finish(); // like Enter, also when nothing was typed
            } else {
                pending += *c;
                typing = true;
            }
        }
        if (typing) finish(); // typed without Enter: it still waits as an answer
        auto& queue = qvad::api::queuedKeystrokes();
        for (Answer& answer : parsed) queue.push_back(std::move(answer));
        return QV_NORM;
    });
}

} // extern "C"
