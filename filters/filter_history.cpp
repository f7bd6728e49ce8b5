// SPDX-License-Identifier: GPL-3.0-or-later
#include "filters/filter_history.h"

#include <map>
#include <memory>
#include <string>

#include "core/commands.h"
#include "core/workspace.h"

namespace wib {

namespace {

struct LastFilter {
    std::string id;
    std::map<std::string, ParamValue> values;
};

constexpr const char* kNoFilterYet = "No filter has been applied yet.";

bool IsFilter(const CommandSpec& command) {
    return command.menu.starts_with("Filter/");
}

}  // namespace

void RegisterFilterRepeat(CommandRegistry& registry) {
    auto last = std::make_shared<LastFilter>();
    const std::vector<CommandSpec> filters = registry.all();
    for (CommandSpec filter : filters) {
        if (!IsFilter(filter)) {
            continue;
        }
        filter.run = [last, id = filter.id, inner = filter.run](Workspace& workspace,
                                                                const ParamValues& values) {
            const bool done = inner(workspace, values);
            if (done) {
                *last = {id, values.all()};
            }
            return done;
        };
        registry.add(std::move(filter));
    }
    const auto repeat = [last, &registry](bool asking) {
        return [last, &registry, asking](Workspace& workspace, const ParamValues&) {
            if (last->id.empty()) {
                workspace.host.prompter.message(kNoFilterYet);
                return false;
            }
            // Copied: running the filter notes it again.
            const LastFilter again = *last;
            const CommandOutcome outcome =
                asking ? registry.runAsking(workspace, again.id, again.values)
                       : registry.run(workspace, again.id, again.values);
            return outcome.status == CommandOutcome::Status::Done;
        };
    };
    registry.add({"filter.repeat", "&Repeat last filter", "Filter", "Ctrl+F", {}, repeat(false)});
    registry.add({"filter.repeat_with_options",
                  "Repeat &with options...",
                  "Filter",
                  "Ctrl+Alt+F",
                  {},
                  repeat(true)});
}

}  // namespace wib
