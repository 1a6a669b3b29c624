#include "Annotate/Filter.h"
#include "Annotate/ReportSections.h"

#include <algorithm>
#include <array>
#include <map>
#include <numeric>

namespace annotate {

namespace {

/// How much there is of each series; the places behind the last series hold 0.
using Amounts = std::array<std::size_t, 4>;
using Bar = std::pair<std::string, Amounts>;

enum Series : std::size_t { OpenNotes, ResolvedNotes, Edits };

struct Chart {
    std::string title;
    std::string counted; ///< What each bar stands for.
    std::vector<std::string> series;
    std::vector<Bar> bars;
};

std::size_t totalOf(const Bar& bar) {
    return std::accumulate(bar.second.begin(), bar.second.end(), std::size_t{0});
}

/// The longest first. Those behind the first fifteen are one bar.
std::vector<Bar> longest(const std::map<std::string, Amounts>& all) {
    constexpr std::size_t most = 15;
    std::vector<Bar> bars(all.begin(), all.end());
    std::stable_sort(bars.begin(), bars.end(), [](const Bar& a, const Bar& b) { return totalOf(a) > totalOf(b); });
    if (bars.size() > most + 1) {
        Bar others('(' + std::to_string(bars.size() - most) + " others)", Amounts{});
        for (auto bar = bars.begin() + most; bar != bars.end(); ++bar) {
            std::transform(bar->second.begin(), bar->second.end(), others.second.begin(), others.second.begin(),
                           std::plus<>());
        }
        bars.resize(most);
        bars.push_back(others);
    }
    return bars;
}

/// What there is, counted in the ways in which it is shown.
class Tally {
public:
    explicit Tally(const Additions& additions) : model(&additions.getDetails().getModel()) {
        for (const AddedNote& added : additions.getNotes()) {
            const Series series = added.note->resolved ? ResolvedNotes : OpenNotes;
            take(added.object, added.storey, added.note->author, series);
        }
        for (const AddedEdit& added : additions.getEdits()) {
            const orv::host::PropertyEdit& edit = added.entry->edit;
            take(added.object, added.storey, edit.author, Edits);
            ++sets[edit.set][static_cast<std::size_t>(standingOf(added, additions.getDetails().getUnits()))];
        }
    }

    std::vector<Chart> charts() const {
        const std::vector<std::string> series = {"Open notes", "Resolved notes", "Edits"};
        return {
            {"By storey", "Storey", series, storeyBars()},
            {"By class", "Class", series, longest(classes)},
            {"Edits by property set", "Property set", {"Differ", "New", "Model has it", "Object gone"}, longest(sets)},
            {"By person", "Person", series, longest(people)}};
    }

private:
    void take(const ModelObject* object, const ModelObject* storey, const std::string& author, Series series) {
        ++(object == nullptr ? onVanished : storeys[storey])[series];
        ++classes[classOf(object)][series];
        ++people[author.empty() ? "(not known)" : author][series];
    }

    /// In the order of the model.
    std::vector<Bar> storeyBars() const {
        std::vector<Bar> bars;
        const auto add = [&](const ModelObject* storey) {
            if (const auto found = storeys.find(storey); found != storeys.end()) {
                bars.emplace_back(storeyName(storey), found->second);
            }
        };
        for (const ModelObject& object : model->getObjects()) {
            add(&object);
        }
        add(nullptr);
        if (onVanished != Amounts{}) {
            bars.emplace_back(classOf(nullptr), onVanished);
        }
        return bars;
    }

    const Model* model;
    std::map<const ModelObject*, Amounts> storeys;
    Amounts onVanished{};
    std::map<std::string, Amounts> classes;
    std::map<std::string, Amounts> sets; ///< The series are how the edits stand to the model.
    std::map<std::string, Amounts> people;
};

std::string fillOf(std::size_t series) {
    return std::string("fill").append(std::to_string(series + 1));
}

/// As in "12.34%".
std::string percentage(std::size_t part, std::size_t whole) {
    const std::size_t hundredths = part * 10000 / std::max<std::size_t>(whole, 1);
    const std::string fraction = std::to_string(hundredths % 100);
    return std::to_string(hundredths / 100).append(fraction.size() == 1 ? ".0" : ".").append(fraction).append("%");
}

void addBar(HtmlPage& page, const Chart& chart, const Bar& bar, std::size_t longestTotal) {
    page << R"(<tr><th scope="row" class="wide">)";
    page.text(bar.first) << R"(</th><td class="wide"><svg class="bar" aria-hidden="true">)";
    std::size_t before = 0;
    for (std::size_t series = 0; series < chart.series.size(); ++series) {
        if (const std::size_t amount = bar.second[series]; amount > 0) {
            page << R"(<rect class=")" << fillOf(series) << R"(" x=")" << percentage(before, longestTotal)
                 << R"(" width=")" << percentage(amount, longestTotal) << R"(" height="100%"/>)";
            before += amount;
        }
    }
    page << "</svg></td>";
    for (std::size_t series = 0; series < chart.series.size(); ++series) {
        page << R"(<td class="number">)" << std::to_string(bar.second[series]) << "</td>";
    }
    page << "</tr>\n";
}

void addChart(HtmlPage& page, const Chart& chart) {
    if (chart.bars.empty()) {
        return;
    }
    std::size_t longestTotal = 0;
    for (const Bar& bar : chart.bars) {
        longestTotal = std::max(longestTotal, totalOf(bar));
    }
    page << R"(<table class="chart"><caption>)" << chart.title << "</caption>\n"
         << R"(<thead><tr><th scope="col" class="wide">)" << chart.counted << R"(</th><td class="wide"></td>)";
    for (std::size_t series = 0; series < chart.series.size(); ++series) {
        page << R"(<th scope="col" class="number"><svg class="key" aria-hidden="true"><rect class=")" << fillOf(series)
             << R"(" width="100%" height="100%"/></svg>)" << chart.series[series] << "</th>";
    }
    page << "</tr></thead>\n<tbody>\n";
    for (const Bar& bar : chart.bars) {
        addBar(page, chart, bar, longestTotal);
    }
    page << "</tbody></table>\n";
}

} // namespace

void addCharts(HtmlPage& page, const Additions& additions) {
    page << R"(<section id="where"><h2>Where and by whom</h2>
<svg class="patterns" aria-hidden="true"><defs>
<pattern id="hatched" width="5" height="5" patternUnits="userSpaceOnUse"><path d="M-1 1 L1 -1 M0 5 L5 0 M4 6 L6 4"/></pattern>
<pattern id="dotted" width="4" height="4" patternUnits="userSpaceOnUse"><circle cx="2" cy="2" r="1"/></pattern>
</defs></svg>
<div class="charts">
)";
    for (const Chart& chart : Tally(additions).charts()) {
        addChart(page, chart);
    }
    page << "</div></section>\n";
}

} // namespace annotate
