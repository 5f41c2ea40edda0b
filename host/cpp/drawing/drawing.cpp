#include "drawing/drawing.h"

#include "ge.h"

#include <algorithm>

namespace host {

bool Pattern::empty() const {
    return size() == 0;
}

std::size_t Pattern::size() const {
    return elements.size() + hatches.size() + texts.size() + arrows.size() + dimensions.size() +
           bitmaps.size() + spaceSize();
}

Pattern& Drawing::addPattern(bool scratch) {
    Pattern& pattern = restorePattern(lastNumber + 1);
    pattern.scratch = scratch;
    pattern.view = openDefinition == 0 ? activeView : 0;
    pattern.definition = openDefinition;
    return pattern;
}

Pattern& Drawing::restorePattern(int number) {
    Pattern& pattern = patterns.emplace_back();
    slotNumbers_.push_back(number);
    pattern.number = number;
    lastNumber = number;
    return pattern;
}

/// Index of the first slot with a number of at least `number`.
std::size_t Drawing::slot(int number) const {
    const std::size_t guess = number > 0 ? static_cast<std::size_t>(number) - 1 : 0;
    if (guess < slotNumbers_.size() && slotNumbers_[guess] == number) return guess;
    const auto found = std::lower_bound(slotNumbers_.begin(), slotNumbers_.end(), number);
    return static_cast<std::size_t>(found - slotNumbers_.begin());
}

const Pattern* Drawing::find(int number) const {
    const std::size_t index = slot(number);
    if (number <= 0 || index >= patterns.size() || patterns[index].number != number) return nullptr;
    return &patterns[index];
}

Pattern* Drawing::find(int number) {
    return const_cast<Pattern*>(static_cast<const Drawing*>(this)->find(number));
}

bool Drawing::remove(int number) {
    Pattern* pattern = find(number);
    if (!pattern) return false;
    elementCount -= std::min(elementCount, pattern->size());
    *pattern = Pattern{};
    if (activeNumber == number) activeNumber = 0;
    // Patterns that come and go, such as the contours of fills, leave no slots behind.
    while (!patterns.empty() && patterns.back().number == 0) {
        patterns.pop_back();
        slotNumbers_.pop_back();
    }
    return true;
}

Pattern* Drawing::next(int number) {
    if (number >= lastNumber) return nullptr;
    for (std::size_t i = slot(number + 1); i < patterns.size(); ++i)
        if (patterns[i].number != 0 && !patterns[i].scratch && patterns[i].definition == openDefinition)
            return &patterns[i];
    return nullptr;
}

const Layer* Drawing::findLayer(const std::string& name) const {
    if (layerIndex_.size() != layers.size()) {
        layerIndex_.clear();
        for (std::size_t i = 0; i < layers.size(); ++i) layerIndex_.emplace(layers[i].name, i);
    }
    const auto found = layerIndex_.find(name);
    if (found == layerIndex_.end() || found->second >= layers.size()) return nullptr;
    return &layers[found->second];
}

Layer* Drawing::findLayer(const std::string& name) {
    return const_cast<Layer*>(static_cast<const Drawing*>(this)->findLayer(name));
}

void Drawing::putLayer(const Layer& layer) {
    if (Layer* known = findLayer(layer.name)) {
        *known = layer;
        return;
    }
    layerIndex_.emplace(layer.name, layers.size());
    layers.push_back(layer);
}

bool Drawing::isVisible(const Pattern& pattern) const {
    if (!pattern.visible) return false;
    const Layer* layer = pattern.ids.layer.empty() ? nullptr : findLayer(pattern.ids.layer);
    return !layer || layer->visible;
}

bool Drawing::isContentOf(const Pattern& pattern, int view) const {
    if (!pattern.isContent() || pattern.view != view || !isVisible(pattern)) return false;
    // The outline of a detail view is its symbol, no part of the model.
    return std::none_of(pattern.attributes.begin(), pattern.attributes.end(), [](const auto& attribute) {
        return attribute.first == "object" && attribute.second == "detailoutline";
    });
}

void Drawing::recount() {
    elementCount = 0;
    for (const Pattern& pattern : patterns) elementCount += pattern.size();
}

void Drawing::clear() {
    *this = Drawing{};
}

double unitInMm(const Drawing& drawing) {
    const double factor = GeUnit(drawing.unit).factor();
    return (factor > 0 ? factor : GeUnit(3).factor()) / GeUnit(3).factor();
}

double drawingTolerance(const Drawing& drawing) {
    return 0.001 / unitInMm(drawing);
}

} // namespace host
