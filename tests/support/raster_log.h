// A raster server that draws nothing and writes down what it is asked.
#pragma once

#include <cstdio>
#include <functional>
#include <initializer_list>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "raster/raster_server.h"

namespace orvane {

/// What all servers of one test were asked, in order, each line with the server's number, counted from 1 as they are made.
struct RasterLog {
    std::vector<std::string> lines;
    int made = 0;
    int alive = 0;
    std::map<std::string, bool> answers;                ///< by the call's name; what is not here is answered true
    std::function<void(const std::string& call)> host;  ///< runs inside each call, as a host's own code would

    std::vector<std::string> Take() { return std::exchange(lines, {}); }
    RasterServerMaker Maker();
};

class LoggingServer : public RasterServer {
public:
    explicit LoggingServer(RasterLog& log) : log_(log), number_(++log.made) { ++log_.alive; }
    ~LoggingServer() override { --log_.alive; }

    bool SrvIsReady() override { return Answer("SrvIsReady", "") && ready_; }
    bool SrvInit() override {
        ready_ = Answer("SrvInit", "");
        return ready_;
    }
    bool SrvLoad(std::string_view filename) override { return Answer("SrvLoad", std::string(filename)); }
    bool SrvClose() override { return Answer("SrvClose", ""); }
    bool SrvDraw(DeviceContext&, const RasterPart& p, std::int16_t mode) override {
        const Rect& r = p.pixels;
        return Answer("SrvDraw", Numbers({p.X1, p.Y1, p.X2, p.Y2, double(r.left), double(r.top), double(r.right),
                                          double(r.bottom), p.PendX, p.PendY, double(mode)}));
    }
    bool SrvRotate(double angle_deg) override { return Answer("SrvRotate", Numbers({angle_deg})); }
    bool SrvSetCP1(std::int32_t bmpX, std::int32_t bmpY, double GeoX, double GeoY) override {
        return Answer("SrvSetCP1", Numbers({double(bmpX), double(bmpY), GeoX, GeoY}));
    }
    bool SrvSetCP2(std::int32_t bmpX, std::int32_t bmpY, double GeoX, double GeoY) override {
        return Answer("SrvSetCP2", Numbers({double(bmpX), double(bmpY), GeoX, GeoY}));
    }
    bool SrvCalcCorrect2() override { return Answer("SrvCalcCorrect2", ""); }
    std::int32_t SrvImgWidth() override { return Answer("SrvImgWidth", "") ? 640 + number_ : 0; }
    std::int32_t SrvImgHeight() override { return Answer("SrvImgHeight", "") ? 480 + number_ : 0; }

private:
    static std::string Numbers(std::initializer_list<double> values) {
        std::string text;
        for (const double value : values) {
            char one[32];
            std::snprintf(one, sizeof one, "%s%g", text.empty() ? "" : " ", value);
            text += one;
        }
        return text;
    }
    bool Answer(const std::string& call, const std::string& values) {
        log_.lines.push_back(std::to_string(number_) + " " + call + (values.empty() ? "" : " " + values));
        const auto told = log_.answers.find(call);
        const bool answer = told == log_.answers.end() || told->second;
        if (log_.host) log_.host(call);
        return answer;
    }

    RasterLog& log_;
    int number_;
    bool ready_ = false;
};

inline RasterServerMaker RasterLog::Maker() {
    return [this] { return std::make_unique<LoggingServer>(*this); };
}

}  // namespace orvane
