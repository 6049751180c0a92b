#pragma once

#include <live/Phone.h>
#include <scenario/ScenarioParser.h>

#include <map>
#include <string>
#include <vector>

// A phone that plays nothing: it reads the text it is sent with the scenario
// parser, as the worker does, and answers every line as played, except the
// lines (by their text) it was told to answer otherwise. It keeps what it
// was asked, for tests to look at.
class FakePhone final : public sim::live::Phone {
public:
    struct Answer {
        int status { 0 };
        std::string messages;
        std::optional<std::string> playedAs;
    };
    std::map<std::string, Answer> answers; // by the line's text
    std::string crashOn; // a line whose text ends the phone
    bool refusesToStart { false };

    int starts { 0 };
    std::vector<sim::live::PlayRequest> played;
    bool stopRequested { false };
    bool running { false };

    std::string start() override
    {
        ++starts;
        running = !refusesToStart;
        return refusesToStart ? "the phone did not start (exit status 3)" : "";
    }

    sim::live::PlayOutcome play(const sim::live::PlayRequest& request, const ProgressHandler&) override
    {
        played.push_back(request);
        sim::live::PlayOutcome outcome;
        if (!running) {
            outcome.phoneStopped = true;
            outcome.stopMessage = "the phone stopped (it was not running)";
            return outcome;
        }
        auto parsed = sim::ScenarioParser::parseText(request.afterBoot ? "boot\n" + request.text : request.text, request.fileName);
        for (sim::Command command : parsed.commands) {
            if (request.afterBoot && command.line == 1)
                continue;
            command.line -= request.afterBoot ? 1 : 0;
            if (command.text == crashOn) {
                running = false;
                outcome.phoneStopped = true;
                outcome.stopMessage = "the phone stopped (ended by signal 11, Segmentation fault)";
                return outcome;
            }
            Answer answer = answers.count(command.text) ? answers[command.text] : Answer {};
            outcome.lines.push_back({ command.line, answer.status, answer.messages, "", answer.playedAs });
            if (answer.status >= 2 || answer.playedAs)
                break;
        }
        return outcome;
    }

    std::optional<std::string> shot() override { return running ? std::optional<std::string>("\x89PNG picture " + std::to_string(played.size())) : std::nullopt; }
    std::optional<std::string> dump() override { return running ? std::optional<std::string>("{\"plays\": " + std::to_string(played.size()) + "}") : std::nullopt; }
    std::optional<std::string> settings() override { return running ? std::optional<std::string>("{\"items\": []}") : std::nullopt; }
    void requestStop() override { stopRequested = true; }
    void kill() override { running = false; }
};
