// The views of a drawing by name and number.
#include "drawing/drawing.h"

#include <algorithm>

namespace host {

const View* Drawing::findView(const std::string& name) const {
    // Views are appended by whoever likes; a view taken out of the middle starts the index anew.
    if (indexedViews_ > views.size()) {
        viewIndex_.clear();
        indexedViews_ = 0;
    }
    for (; indexedViews_ < views.size(); ++indexedViews_)
        viewIndex_.emplace(views[indexedViews_].name, indexedViews_);
    const auto found = viewIndex_.find(name);
    if (found != viewIndex_.end() && views[found->second].name == name) return &views[found->second];
    if (found == viewIndex_.end()) return nullptr;
    const auto other =
        std::find_if(views.begin(), views.end(), [&](const View& view) { return view.name == name; });
    return other == views.end() ? nullptr : &*other;
}

View* Drawing::findView(const std::string& name) {
    return const_cast<View*>(static_cast<const Drawing*>(this)->findView(name));
}

const View* Drawing::findView(int number) const {
    // Numbers ascend with the place: the view stands at its number or, after removals, ahead of it.
    const std::size_t last = std::min(views.size(), static_cast<std::size_t>(std::max(number, 0)) + 1);
    for (std::size_t i = last; i-- > 0;)
        if (views[i].number == number) return &views[i];
    return nullptr;
}

View* Drawing::findView(int number) {
    return const_cast<View*>(static_cast<const Drawing*>(this)->findView(number));
}

View& Drawing::addView(View view) {
    view.number = ++lastViewNumber;
    return views.emplace_back(std::move(view));
}

void Drawing::renameView(View& view, const std::string& name) {
    findView(view.name); // the index knows all views by now
    viewIndex_.erase(view.name);
    view.name = name;
    viewIndex_[name] = static_cast<std::size_t>(&view - views.data());
}

void Drawing::removeView(int number) {
    const auto view =
        std::find_if(views.begin(), views.end(), [&](const View& v) { return v.number == number; });
    if (view == views.end()) return;
    std::erase_if(viewInserts, [&](const ViewInsert& i) { return i.sheet == number || i.view == number; });
    if (activeView == number) activeView = 0;
    views.erase(view);
    viewIndex_.clear();
    indexedViews_ = 0;
}

double Drawing::viewScale(int number) const {
    const View* view = number == 0 ? nullptr : findView(number);
    return view ? view->scale : scale;
}

} // namespace host
