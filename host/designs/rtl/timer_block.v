// Two PWM channels on one time base.
//
//   address  register
//   0        control   bit 0 run, bit 1 interrupt enable, bits 3:2 invert channel 1:0
//   1        prescale  clocks per count, less one
//   2        period    counts per cycle, less one
//   4, 5     duty of channel 0, 1, in counts
//   8        status    bit 0 interrupt pending; cleared by a read
//   9        count     the present count

`default_nettype none

module timer_block (
    input  wire       clk,
    input  wire       reset,
    input  wire       select,
    input  wire [3:0] address,
    input  wire [7:0] write_data,
    input  wire       write,
    input  wire       read,
    output reg  [7:0] read_data,
    output wire [1:0] pwm,
    output wire       irq
);
    localparam [3:0] CONTROL = 4'd0, PRESCALE = 4'd1, PERIOD = 4'd2, DUTY_0 = 4'd4, DUTY_1 = 4'd5,
                     STATUS = 4'd8, COUNT = 4'd9;

    reg  [3:0] control;
    reg  [7:0] prescale;
    reg  [7:0] period;
    reg  [7:0] count;
    reg        pending;
    wire [7:0] duty_0;
    wire [7:0] duty_1;
    wire       tick;

    wire run        = control[0];
    wire irq_enable = control[1];
    wire cycle_end  = tick && (count >= period);

    prescaler u_prescaler (
        .clk(clk),
        .reset(reset),
        .run(run),
        .divisor(prescale),
        .tick(tick)
    );

    pwm_channel u_pwm_0 (
        .clk(clk),
        .reset(reset),
        .load(select && write && address == DUTY_0),
        .load_data(write_data),
        .run(run),
        .cycle_end(cycle_end),
        .count(count),
        .invert(control[2]),
        .duty(duty_0),
        .pwm(pwm[0])
    );

    pwm_channel u_pwm_1 (
        .clk(clk),
        .reset(reset),
        .load(select && write && address == DUTY_1),
        .load_data(write_data),
        .run(run),
        .cycle_end(cycle_end),
        .count(count),
        .invert(control[3]),
        .duty(duty_1),
        .pwm(pwm[1])
    );

    always @(posedge clk)
        if (reset) begin
            control  <= 4'd0;
            prescale <= 8'd0;
            period   <= 8'hff;
        end else if (select && write)
            case (address)
                CONTROL:  control  <= write_data[3:0];
                PRESCALE: prescale <= write_data;
                PERIOD:   period   <= write_data;
                default:  ;
            endcase

    always @(posedge clk)
        if (reset || !run)
            count <= 8'd0;
        else if (tick)
            count <= cycle_end ? 8'd0 : count + 8'd1;

    // A cycle that ends in the clock of the read is not lost.
    always @(posedge clk)
        if (reset)
            pending <= 1'b0;
        else if (cycle_end)
            pending <= 1'b1;
        else if (select && read && address == STATUS)
            pending <= 1'b0;

    always @*
        case (address)
            CONTROL:  read_data = {4'd0, control};
            PRESCALE: read_data = prescale;
            PERIOD:   read_data = period;
            DUTY_0:   read_data = duty_0;
            DUTY_1:   read_data = duty_1;
            STATUS:   read_data = {7'd0, pending};
            COUNT:    read_data = count;
            default:  read_data = 8'd0;
        endcase

    assign irq = pending && irq_enable;
endmodule

`default_nettype wire
